; One setup or uninstaller at a time, on the whole machine: two would write the same files and the
; same entry.
!define RUNNING "Global\TORVA ZEM add-in for Mastercam setup"

; In milliseconds. An uninstaller has taken its entry away a moment before it ends.
!define PATIENCE 3000

!define /ifndef WAIT_OBJECT_0 0
!define /ifndef WAIT_ABANDONED 0x80 ; the run before was ended in the midst

!macro DefineEndUnlessAlone UN
; The system gives the mutex back when this program ends.
Function ${UN}EndUnlessAlone
    System::Call 'kernel32::CreateMutexW(p 0, i 0, w "${RUNNING}") p .r0'
    System::Call 'kernel32::WaitForSingleObject(p r0, i ${PATIENCE}) i .r1'
    ${If} $1 <> ${WAIT_OBJECT_0}
    ${AndIf} $1 <> ${WAIT_ABANDONED}
        ${NoteTrouble} ${IN_USE} "Another setup of the add-in is running. Let it end and try again."
        SetErrorLevel $Trouble
        ${ShowTrouble}
        Quit
    ${EndIf}
FunctionEnd
!macroend
!insertmacro DefineEndUnlessAlone ""
!insertmacro DefineEndUnlessAlone "un."
