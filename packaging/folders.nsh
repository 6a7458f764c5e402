; The folders that were made for the add-in. They are kept beside the entry among the installed
; programs, so that the uninstaller, or a later version, removes these and no others.
!define MADE_FOLDERS "${ENTRY}\Folders" ; each is the name of an empty value

!macro MakeFolder PATH
    Push "${PATH}"
    Call MakeFolder
!macroend
!define MakeFolder "!insertmacro MakeFolder"

; Makes a folder, and those above it that are missing.
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
            ${NoteTrouble} ${CANNOT_WRITE} "The folder $0 cannot be made."
        ${Else}
            WriteRegStr HKLM "${MADE_FOLDERS}" $0 ""
        ${EndIf}
    ${EndIf}
    Pop $1
    Pop $0
FunctionEnd

!macro DefineRemoveEmptyFolders UN
; Removes those of them that are empty, and forgets them. A folder can go once those in it have
; gone, so that each removal is followed by another look at all.
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
