; Only one setup or uninstaller runs at a time on the machine: two would write the same files and the
; same entry.
!define RUNNING "Global\TORVA ZEM add-in for Mastercam setup"

; An uninstaller removes its entry a moment before it exits.
!define WAIT_MS 3000

!define /ifndef WAIT_OBJECT_0 0
!define /ifndef WAIT_ABANDONED 0x80 ; the previous run was terminated

!macro DefineEnsureSingleInstance UN
; Windows releases the mutex when this program exits. Every user can hold a mutex of this name, or deny access
; to it; setup then ends with its exit code and changes nothing. They can do the same by opening an installed
; file, so a protected name would gain nothing. Nobody can make two setups run at the same time.
Function ${UN}EnsureSingleInstance
    System::Call 'kernel32::CreateMutexW(p 0, i 0, w "${RUNNING}") p .r0'
    System::Call 'kernel32::WaitForSingleObject(p r0, i ${WAIT_MS}) i .r1'
    ${If} $1 <> ${WAIT_OBJECT_0}
    ${AndIf} $1 <> ${WAIT_ABANDONED}
        ${RecordError} ${IN_USE} "Another setup of the add-in is running. Wait until it has \
            finished, then try again."
        ${LogExit} $ErrorCode "Nothing is changed."
        SetErrorLevel $ErrorCode
        ${ShowError}
        Quit
    ${EndIf}
FunctionEnd
!macroend
!insertmacro DefineEnsureSingleInstance ""
!insertmacro DefineEnsureSingleInstance "un."
