; What stands in the way of a run. The first trouble counts; nothing is changed once there is one.
Var Trouble ; the exit code, or 0
Var TroubleText

; The system's own codes are 1, cancelled, and 2, the program itself cannot go on.
!define NO_HOST 3
!define IN_USE 4
!define CANNOT_WRITE 5

!define IN_USE_TEXT " is in use.$\r$\n$\r$\nClose "

!define /ifndef OPEN_EXISTING 3

!macro NoteTrouble CODE TEXT
    ${If} $Trouble = 0
        StrCpy $Trouble ${CODE}
        StrCpy $TroubleText "${TEXT}"
    ${EndIf}
!macroend
!define NoteTrouble "!insertmacro NoteTrouble"

!macro ShowTrouble
    MessageBox MB_OK|MB_ICONEXCLAMATION "$TroubleText" /SD IDOK
!macroend
!define ShowTrouble "!insertmacro ShowTrouble"

; Keeps the user on the page until the trouble is gone.
!macro StayOnPageInTrouble
    ${If} $Trouble <> 0
        ${ShowTrouble}
        StrCpy $Trouble 0
        Abort
    ${EndIf}
!macroend
!define StayOnPageInTrouble "!insertmacro StayOnPageInTrouble"

; A file that is there must be free to be replaced or deleted: it is opened for that, and for nobody
; else beside. A library that a process has loaded refuses it, as does a file that somebody reads.
!macro CheckFile UN PATH USER
    Push "${USER}"
    Push "${PATH}"
    Call ${UN}CheckFile
!macroend

!macro DefineCheckFile UN
Function ${UN}CheckFile
    Exch $0 ; path
    Exch
    Exch $1 ; who would use it
    Push $2
    Push $3
    ${If} ${FileExists} $0
        System::Call 'kernel32::CreateFileW(w r0, i ${GENERIC_READ}|${GENERIC_WRITE}|${DELETE}, \
            i 0, p 0, i ${OPEN_EXISTING}, i 0, p 0) p .r2 ?e'
        Pop $3
        ${If} $2 P<> ${INVALID_HANDLE_VALUE}
            System::Call 'kernel32::CloseHandle(p r2)'
        ${ElseIf} $3 = ${ERROR_SHARING_VIOLATION}
            ${NoteTrouble} ${IN_USE} "$0${IN_USE_TEXT}$1 and try again."
        ${Else}
            ${NoteTrouble} ${CANNOT_WRITE} "$0 cannot be replaced (error $3)."
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
