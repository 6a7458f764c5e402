; The options of the command line, and what is printed in a silent run.

!define /ifndef FILE_TYPE_UNKNOWN 0
!define /ifndef ATTACH_PARENT_PROCESS -1

!macro DefineReadOption UN
; Pops an option such as "/HOST=" and pushes its value. Sets the error flag if the option is missing.
; GetOptions finds no option that starts inside quotes, as in "/HOST=C:\some folder".
Function ${UN}ReadOption
    System::Store S
    Pop $1
    ${GetParameters} $0
    ClearErrors
    ${GetOptions} $0 $1 $2
    ${If} ${Errors}
        StrCpy $0 " $0"
        StrCpy $1 ' "$1'
        StrLen $3 $1
        StrCpy $4 -1
        ${Do}
            IntOp $4 $4 + 1
            StrCpy $2 $0 $3 $4
            ${If} $2 == ""
                SetErrors
                ${ExitDo}
            ${EndIf}
        ${LoopUntil} $2 == $1
        IntOp $4 $4 + $3
        StrCpy $0 $0 "" $4
        StrCpy $4 -1
        ${Do}
            IntOp $4 $4 + 1
            StrCpy $2 $0 1 $4
            ${If} $2 == '"'
                ${ExitDo}
            ${EndIf}
        ${LoopUntil} $2 == ""
        StrCpy $2 $0 $4
    ${EndIf}
    Push $2
    System::Store L
FunctionEnd
!macroend

; ReadOption OPTION RESULT
!macro ReadOption OPTION RESULT
    Push "${OPTION}"
    !ifdef __UNINSTALL__
        Call un.ReadOption
    !else
        Call ReadOption
    !endif
    Pop ${RESULT}
!macroend
!define ReadOption "!insertmacro ReadOption"

!macro DefinePrint UN
; Pops a text and writes it to the standard output, or to the console of the program that started this
; one. Sets the error flag if there is neither.
Function ${UN}Print
    System::Store S
    Pop $1
    System::Call 'kernel32::GetStdHandle(i ${STD_OUTPUT_HANDLE}) p .r0'
    System::Call 'kernel32::GetFileType(p r0) i .r2'
    ${If} $2 = ${FILE_TYPE_UNKNOWN}
        System::Call 'kernel32::AttachConsole(i ${ATTACH_PARENT_PROCESS})'
        System::Call 'kernel32::GetStdHandle(i ${STD_OUTPUT_HANDLE}) p .r0'
    ${EndIf}
    ClearErrors
    FileWrite $0 "$1$\r$\n"
    System::Store L
FunctionEnd
!macroend

!insertmacro DefineReadOption ""
!insertmacro DefineReadOption "un."
!insertmacro DefinePrint ""
!insertmacro DefinePrint "un."
