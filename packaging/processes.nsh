; The running hosts, and the programs that use a file.
!define HOST_PROGRAM "Mastercam.exe"

!define /ifndef ERROR_MORE_DATA 234
!define /ifndef PROCESS_VM_READ 0x10
!define /ifndef PROCESS_QUERY_INFORMATION 0x400
!define /ifndef PROCESS_QUERY_LIMITED_INFORMATION 0x1000

!define MAX_PROCESSES 16384
!define MAX_MODULES 4096
!define RM_PROCESS_INFO_SIZE 668

!macro DefineProcesses UN
; Pops a process id and pushes the full path of its program; empty if that is unknown.
Function ${UN}FindProgramPath
    System::Store S
    Pop $0
    StrCpy $2 ""
    System::Call 'kernel32::OpenProcess(i ${PROCESS_QUERY_LIMITED_INFORMATION}, i 0, i r0) p .r1'
    ${If} $1 P<> 0
        System::Call 'kernel32::QueryFullProcessImageNameW(p r1, i 0, w .r2, *i ${NSIS_MAX_STRLEN}) i .r3'
        ${If} $3 = 0
            StrCpy $2 ""
        ${EndIf}
        System::Call 'kernel32::CloseHandle(p r1)'
    ${EndIf}
    Push $2
    System::Store L
FunctionEnd

; Pushes the ids of the running hosts, the first one first, and then their number.
Function ${UN}FindHosts
    System::Store S
    StrCpy $5 0
    IntOp $1 ${MAX_PROCESSES} * 4
    System::Alloc $1
    Pop $0
    System::Call 'kernel32::K32EnumProcesses(p r0, i r1, *i .r2) i .r3'
    ${If} $3 = 0
        StrCpy $2 0
    ${EndIf}
    IntPtrOp $1 $0 + $2
    StrCpy $2 $0
    ${While} $2 P< $1
        System::Call '*$2(&i4 .r3)'
        IntPtrOp $2 $2 + 4
        Push $3
        Call ${UN}FindProgramPath
        Pop $4
        ${GetFileName} $4 $4
        ${If} $4 == "${HOST_PROGRAM}"
            Push $3
            IntOp $5 $5 + 1
        ${EndIf}
    ${EndWhile}
    System::Free $0
    Push $5
    System::Store L
FunctionEnd

; Pops a path and then a process id; pushes whether the process has loaded this DLL, as 1 or 0.
Function ${UN}HasLoaded
    System::Store S
    Pop $0
    Pop $1
    StrCpy $7 0
    IntOp $2 ${PROCESS_QUERY_INFORMATION} | ${PROCESS_VM_READ}
    System::Call 'kernel32::OpenProcess(i r2, i 0, i r1) p .r1'
    ${If} $1 P<> 0
        IntOp $2 ${MAX_MODULES} * 8
        System::Alloc $2
        Pop $3
        System::Call 'kernel32::K32EnumProcessModules(p r1, p r3, i r2, *i .r4) i .r5'
        ${If} $5 = 0
            StrCpy $4 0
        ${ElseIf} $4 > $2
            StrCpy $4 $2
        ${EndIf}
        IntPtrOp $2 $3 + $4
        StrCpy $4 $3
        ${While} $4 P< $2
            System::Call '*$4(p .r5)'
            IntPtrOp $4 $4 + 8
            System::Call 'kernel32::K32GetModuleFileNameExW(p r1, p r5, w .r6, i ${NSIS_MAX_STRLEN})'
            ${If} $6 == $0
                StrCpy $7 1
                ${ExitWhile}
            ${EndIf}
        ${EndWhile}
        System::Free $3
        System::Call 'kernel32::CloseHandle(p r1)'
    ${EndIf}
    Push $7
    System::Store L
FunctionEnd

; Pops a path; pushes the programs that use this file, as "A.exe (process 1), B.exe (process 2)", or nothing
; if they are unknown. Windows knows them from its Restart Manager. Where that has no answer, the hosts'
; modules show who has loaded a DLL.
Function ${UN}FindUsers
    System::Store S
    Pop $0
    StrCpy $R0 ""
    System::Call 'rstrtmgr::RmStartSession(*i .r1, i 0, w .r2) i .r3'
    ${If} $3 == 0 ; not a number if there is no such DLL
        System::Call '*(&w${NSIS_MAX_STRLEN} r0) p .r4'
        System::Call '*(p r4) p .r5'
        System::Call 'rstrtmgr::RmRegisterResources(i r1, i 1, p r5, i 0, p 0, i 0, p 0)'
        System::Call 'rstrtmgr::RmGetList(i r1, *i .r6, *i 0, p 0, *i .r7) i .r3'
        ${If} $3 = ${ERROR_MORE_DATA}
            IntOp $8 $6 * ${RM_PROCESS_INFO_SIZE}
            System::Alloc $8
            Pop $8
            System::Call 'rstrtmgr::RmGetList(i r1, *i .r7, *i r6r6, p r8, *i .r7) i .r3'
            ${If} $3 <> 0
                StrCpy $6 0
            ${EndIf}
            StrCpy $9 $8
            ${While} $6 > 0
                System::Call '*$9(&i4 .r7, &i8, &w256 .R1)' ; process id, start time, name
                Push $7
                Call ${UN}FindProgramPath
                Pop $R2
                ${If} $R2 != ""
                    ${GetFileName} $R2 $R1
                ${EndIf}
                StrCpy $R0 "$R0, $R1 (process $7)"
                IntPtrOp $9 $9 + ${RM_PROCESS_INFO_SIZE}
                IntOp $6 $6 - 1
            ${EndWhile}
            System::Free $8
        ${EndIf}
        System::Call 'rstrtmgr::RmEndSession(i r1)'
        System::Free $5
        System::Free $4
    ${EndIf}
    ${If} $R0 == ""
        Call ${UN}FindHosts
        Pop $1
        ${While} $1 > 0
            IntOp $1 $1 - 1
            Pop $2
            Push $2
            Push $0
            Call ${UN}HasLoaded
            Pop $3
            ${If} $3 = 1
                StrCpy $R0 "$R0, ${HOST_PROGRAM} (process $2)"
            ${EndIf}
        ${EndWhile}
    ${EndIf}
    StrCpy $R0 $R0 "" 2
    Push $R0
    System::Store L
FunctionEnd
!macroend
!insertmacro DefineProcesses ""
!insertmacro DefineProcesses "un."
