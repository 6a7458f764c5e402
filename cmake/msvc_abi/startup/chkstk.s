# Touches each page of a frame of rax bytes, so that the stack grows; all registers are kept.
    .text
    .globl __chkstk
__chkstk:
    pushq %rcx
    pushq %rax
    leaq 24(%rsp), %rcx
1:  cmpq $0x1000, %rax
    jb 2f
    subq $0x1000, %rcx
    testq %rcx, (%rcx)
    subq $0x1000, %rax
    jmp 1b
2:  subq %rax, %rcx
    testq %rcx, (%rcx)
    popq %rax
    popq %rcx
    ret
