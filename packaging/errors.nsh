; The errors of a run. The first error counts; after it nothing is changed.
Var ErrorCode ; the exit code, or 0
Var ErrorText

; NSIS itself uses 1 (cancelled) and 2 (the setup program failed).
!define CANCELLED 1
!define FAILED 2
!define NO_HOST 3
!define IN_USE 4
!define CANNOT_WRITE 5

!define /ifndef OPEN_EXISTING 3

!macro RecordError CODE TEXT
    ${If} $ErrorCode = 0
        StrCpy $ErrorCode ${CODE}
        StrCpy $ErrorText "${TEXT}"
        ${Log} "Error: $ErrorText"
    ${EndIf}
!macroend
!define RecordError "!insertmacro RecordError"

!macro ShowError
    ${If} $LogFile == ""
        MessageBox MB_OK|MB_ICONEXCLAMATION "$ErrorText" /SD IDOK
    ${Else}
        MessageBox MB_OK|MB_ICONEXCLAMATION "$ErrorText$\r$\n$\r$\nLog: $LogFile" /SD IDOK
    ${EndIf}
!macroend
!define ShowError "!insertmacro ShowError"

; Keeps the user on the page until the error is resolved.
!macro StayOnPageAfterError
    ${If} $ErrorCode <> 0
        ${ShowError}
        StrCpy $ErrorCode 0
        Abort
    ${EndIf}
!macroend
!define StayOnPageAfterError "!insertmacro StayOnPageAfterError"

; An existing file must be replaceable and deletable: it is opened with that access and without sharing.
; This fails for a DLL that a process has loaded and for a file that another program reads.
!macro CheckFile UN PATH USER
    Push "${USER}"
    Push "${PATH}"
    Call ${UN}CheckFile
!macroend

!macro DefineCheckFile UN
Function ${UN}CheckFile
    Exch $0 ; path
    Exch
    Exch $1 ; the program that probably uses it
    Push $2
    Push $3
    ${If} $ErrorCode = 0
    ${AndIf} ${FileExists} $0
        System::Call 'kernel32::CreateFileW(w r0, i ${GENERIC_READ}|${GENERIC_WRITE}|${DELETE}, \
            i 0, p 0, i ${OPEN_EXISTING}, i 0, p 0) p .r2 ?e'
        Pop $3
        ${If} $2 P<> ${INVALID_HANDLE_VALUE}
            System::Call 'kernel32::CloseHandle(p r2)'
        ${ElseIf} $3 = ${ERROR_SHARING_VIOLATION}
            Push $0
            Call ${UN}FindUsers
            Pop $2
            ${If} $2 == ""
                ${RecordError} ${IN_USE} "$0 is in use. Close $1 and try again."
            ${Else}
                ${RecordError} ${IN_USE} "$0 is in use by $2. Close the program and try again."
            ${EndIf}
        ${Else}
            ${RecordError} ${CANNOT_WRITE} "$0 cannot be replaced (error $3)."
        ${EndIf}
    ${EndIf}
    Pop $3
    Pop $2
    Pop $1
    Pop $0
FunctionEnd
!macroend
!insertmacro DefineCheckFile ""
!insertmacro DefineCheckFile "un."

!macro DefineDeleteFile UN
; Pops a path. A missing file is no error.
Function ${UN}DeleteFile
    Exch $0
    ${If} ${FileExists} $0
        Delete $0
        ${If} ${FileExists} $0
            !insertmacro CheckFile "${UN}" $0 "the program that uses it"
            ${RecordError} ${CANNOT_WRITE} "$0 cannot be deleted."
        ${Else}
            ${Log} "Removed $0"
        ${EndIf}
    ${EndIf}
    Pop $0
FunctionEnd
!macroend
!insertmacro DefineDeleteFile ""
!insertmacro DefineDeleteFile "un."
