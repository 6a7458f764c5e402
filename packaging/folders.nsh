; The folders that setup created. They are recorded under the entry in the list of installed programs, so
; that the uninstaller, or a later version, removes only these.
!define MADE_FOLDERS "${ENTRY}\Folders" ; each is the name of an empty value

!macro MakeFolder PATH
    Push "${PATH}"
    Call MakeFolder
!macroend
!define MakeFolder "!insertmacro MakeFolder"

; Creates a folder and its missing parents.
Function MakeFolder
    Exch $0
    Push $1
    ${IfNot} ${FileExists} "$0\*.*"
        ${GetParent} $0 $1
        ${If} $1 != ""
            ${MakeFolder} $1
        ${EndIf}
        ClearErrors
        CreateDirectory $0
        ${If} ${Errors}
            ${RecordError} ${CANNOT_WRITE} "The folder $0 cannot be created."
        ${Else}
            WriteRegStr HKLM "${MADE_FOLDERS}" $0 ""
            ${Log} "Created the folder $0"
        ${EndIf}
    ${EndIf}
    Pop $1
    Pop $0
FunctionEnd

!macro DefineRemoveEmptyFolders UN
; Removes the recorded folders that are empty, and their records. Removing a folder can make its parent
; empty, so the loop starts again after each removal.
Function ${UN}RemoveEmptyFolders
    StrCpy $0 0
    ${Do}
        EnumRegValue $1 HKLM "${MADE_FOLDERS}" $0
        ${If} $1 == ""
            ${Break}
        ${EndIf}
        RMDir $1
        ${If} ${FileExists} "$1\*.*"
            IntOp $0 $0 + 1
        ${Else}
            DeleteRegValue HKLM "${MADE_FOLDERS}" $1
            ${Log} "Removed the folder $1"
            StrCpy $0 0
        ${EndIf}
    ${Loop}
    ${If} $0 = 0
        DeleteRegKey HKLM "${MADE_FOLDERS}"
    ${EndIf}
FunctionEnd
!macroend
!insertmacro DefineRemoveEmptyFolders ""
!insertmacro DefineRemoveEmptyFolders "un."
