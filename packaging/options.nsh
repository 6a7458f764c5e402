; The options of the command line, and what is printed in a silent run.

!define /ifndef FILE_TYPE_UNKNOWN 0
!define /ifndef ATTACH_PARENT_PROCESS -1

; KeepFirst COUNT: of the text in $0.
!macro KeepFirst COUNT
    ${If} ${COUNT} = 0
        StrCpy $0 ""
    ${Else}
        StrCpy $0 $0 ${COUNT}
    ${EndIf}
!macroend

!macro DefineReadOption UN
; Pops an option such as "/HOST=" or "/HELP" and pushes its value. Sets the error flag if the option is missing.
;
; The value is in quotes, or the whole option is, as in "/HOST=C:\some folder". Without quotes it ends before
; the next option and may contain spaces. NSIS's GetOptions would find no option that starts inside quotes, end
; a value at any slash, and take an apostrophe in a folder's name for a quote.
Function ${UN}ReadOption
    System::Store S
    Pop $1
    ${GetParameters} $0
    StrCpy $0 " $0"
    StrCpy $R1 " $1"
    StrCpy $R2 ' "$1'
    StrLen $2 $R1
    IntOp $3 $2 + 1
    StrCpy $4 -1 ; the place in the command line
    StrCpy $5 0 ; 1 inside quotes
    StrCpy $6 0 ; the length of what was found
    ${Do}
        IntOp $4 $4 + 1
        StrCpy $7 $0 1 $4
        ${If} $7 == '"'
            IntOp $5 1 - $5
        ${ElseIf} $5 = 0
            StrCpy $8 $0 $2 $4
            StrCpy $9 $0 $3 $4
            ${If} $8 == $R1
                StrCpy $6 $2
                ${ExitDo}
            ${ElseIf} $9 == $R2
                StrCpy $6 $3
                ${ExitDo}
            ${EndIf}
        ${EndIf}
    ${LoopUntil} $7 == ""
    ClearErrors
    ${If} $6 = 0
        StrCpy $0 ""
        SetErrors
    ${Else}
        IntOp $4 $4 + $6
        StrCpy $0 $0 "" $4
        ${If} $6 = $2
            Call ${UN}CutAtNextOption
        ${Else}
            StrCpy $0 '"$0'
        ${EndIf}
        Call ${UN}RemoveQuotes
    ${EndIf}
    Push $0
    System::Store L
FunctionEnd

; Cuts the text in $0 before the next option, and removes the spaces around it.
Function ${UN}CutAtNextOption
    StrCpy $4 -1
    StrCpy $5 0
    ${Do}
        IntOp $4 $4 + 1
        StrCpy $7 $0 1 $4
        ${If} $7 == '"'
            IntOp $5 1 - $5
        ${ElseIf} $5 = 0
            StrCpy $8 $0 2 $4
            StrCpy $9 $0 3 $4
            ${If} $8 == " /"
            ${OrIf} $9 == ' "/'
                ${ExitDo}
            ${EndIf}
        ${EndIf}
    ${LoopUntil} $7 == ""
    !insertmacro KeepFirst $4
    ${Do}
        StrCpy $7 $0 1
        ${If} $7 != " "
            ${ExitDo}
        ${EndIf}
        StrCpy $0 $0 "" 1
    ${Loop}
    ${Do}
        StrCpy $7 $0 1 -1
        ${If} $7 != " "
            ${ExitDo}
        ${EndIf}
        StrCpy $0 $0 -1
    ${Loop}
FunctionEnd

; Of a text in $0 that begins with a quote, keeps what is before the next one.
Function ${UN}RemoveQuotes
    StrCpy $7 $0 1
    ${If} $7 != '"'
        Return
    ${EndIf}
    StrCpy $0 $0 "" 1
    StrCpy $4 -1
    ${Do}
        IntOp $4 $4 + 1
        StrCpy $7 $0 1 $4
        ${If} $7 == '"'
            ${ExitDo}
        ${EndIf}
    ${LoopUntil} $7 == ""
    !insertmacro KeepFirst $4
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
