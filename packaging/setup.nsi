; The setup program: puts the library among Mastercam's command hooks, and the support tool and the
; pages into a folder of their own, for all users of the machine.
;
; Nothing that is installed is touched before every new file lies beside its place and every old one
; has been found free. An earlier version is removed by its own uninstaller, which knows its files.
;
; packaging/pack defines VERSION, PACKAGE (the folder with what is installed), FILES (its list) and
; SETUP (the program to make).
Target amd64-unicode
SetCompressor /SOLID lzma
SetDateSave off ; nothing of the time of packing goes in
RequestExecutionLevel admin
ManifestDPIAware true

!include FileFunc.nsh
!include LogicLib.nsh
!include MUI2.nsh
!include WinCore.nsh
!include Win\WinError.nsh
!include "${FILES}"

!define PRODUCT "TORVA ZEM add-in for Mastercam"
!define ENTRY "Software\Microsoft\Windows\CurrentVersion\Uninstall\${PRODUCT}"
!define HOOKS "chooks" ; the folder of Mastercam's command hooks, below its own
!define LIBRARY "${HOOKS}\torvapdm.dll"
!define UNINSTALLER "uninstall.exe"

Name "${PRODUCT}"
OutFile "${SETUP}"
BrandingText "${PRODUCT} ${VERSION}"
InstallDir "$PROGRAMFILES64\TORVA AS\ZEM add-in"
InstallDirRegKey HKLM "${ENTRY}" "InstallLocation"
SpaceTexts none

VIProductVersion "${VERSION}.0"
VIFileVersion "${VERSION}.0"
VIAddVersionKey "CompanyName" "TORVA AS"
VIAddVersionKey "FileDescription" "Setup of the ${PRODUCT}"
VIAddVersionKey "FileVersion" "${VERSION}"
VIAddVersionKey "LegalCopyright" "TORVA AS"
VIAddVersionKey "ProductName" "TORVA ZEM"
VIAddVersionKey "ProductVersion" "${VERSION}"

Var HostFolder
Var EarlierFolder ; of the version that is installed, or empty
Var EarlierHostFolder
Var HasBegun ; to write, so that there is something to take back
Var HasMadeEntry ; so that it goes with the rest
Var KeepsEntry

!include errors.nsh
!include single_instance.nsh
!include folders.nsh

!define MUI_ICON "${NSISDIR}/Contrib/Graphics/Icons/box-install.ico"
!define MUI_UNICON "${NSISDIR}/Contrib/Graphics/Icons/box-uninstall.ico"

!define MUI_PAGE_HEADER_TEXT "Mastercam's folder"
!define MUI_PAGE_HEADER_SUBTEXT "Where is Mastercam installed?"
!define MUI_DIRECTORYPAGE_TEXT_TOP "Setup puts the add-in among Mastercam's command hooks, in the \
    folder ${HOOKS}. Name the folder that holds Mastercam.exe, and close Mastercam."
!define MUI_DIRECTORYPAGE_TEXT_DESTINATION "Mastercam's folder"
!define MUI_DIRECTORYPAGE_VARIABLE $HostFolder
!define MUI_PAGE_CUSTOMFUNCTION_LEAVE LeaveHostPage
!insertmacro MUI_PAGE_DIRECTORY

!define MUI_PAGE_HEADER_TEXT "Support tool and pages"
!define MUI_PAGE_HEADER_SUBTEXT "Where shall zemlink.exe and the pages of the add-in lie?"
!define MUI_DIRECTORYPAGE_TEXT_TOP "zemlink.exe shows what passes between Mastercam and TORVA ZEM \
    and looks for the usual troubles. It is put into this folder together with the pages about the \
    add-in."
!define MUI_PAGE_CUSTOMFUNCTION_LEAVE LeaveFolderPage
!insertmacro MUI_PAGE_DIRECTORY

!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE English

Function .onInit
    StrCpy $Trouble 0
    StrCpy $HasBegun 0
    StrCpy $HasMadeEntry 0
    Call EndUnlessAlone
    ReadRegStr $EarlierFolder HKLM "${ENTRY}" "InstallLocation"
    ReadRegStr $EarlierHostFolder HKLM "${ENTRY}" "HostFolder"
    ${GetParameters} $0
    ${GetOptions} $0 "/HOST=" $HostFolder
    ${If} ${Errors}
        StrCpy $HostFolder $EarlierHostFolder
    ${EndIf}
FunctionEnd

Function LeaveHostPage
    Call CheckHostFolder
    ${StayOnPageInTrouble}
FunctionEnd

Function LeaveFolderPage
    Call CheckFiles
    ${StayOnPageInTrouble}
FunctionEnd

Section
    AddSize ${KILOBYTES}
    Call CheckNamedFolder
    Call CheckHostFolder
    Call CheckFiles
    Call EndInTrouble
    Call WriteBesidePlaces
    Call EndInTrouble
    Call RemoveEarlierVersion
    Call EndInTrouble
    Call WriteEntry
    Call PutInPlace
    Call EndInTrouble
    Call RemoveEmptyFolders ; that the earlier version had and this one has not
SectionEnd

Function CheckHostFolder
    StrCpy $0 $HostFolder "" 1
    ${If} $0 == ":" ; what the page makes of a drive's root; alone it is the current folder there
        StrCpy $HostFolder "$HostFolder\"
    ${EndIf}
    GetFullPathName $0 $HostFolder
    StrLen $1 $0
    StrCpy $2 $0 1 -1
    ${If} $2 == "\"
    ${AndIf} $1 > 3
        StrCpy $0 $0 -1
    ${EndIf}
    ${If} $HostFolder == ""
    ${OrIfNot} ${FileExists} "$0\Mastercam.exe"
        ${NoteTrouble} ${NO_HOST} "There is no Mastercam.exe in the folder $\"$HostFolder$\"."
    ${Else}
        StrCpy $HostFolder $0
    ${EndIf}
FunctionEnd

; In place of a folder that cannot be, on a drive that is not there or below a file, the usual one
; was taken by now. A user sees that on the page; nobody sees it in a silent run.
Function CheckNamedFolder
    System::Call 'kernel32::GetCommandLineW() t .r0'
    StrLen $1 $CMDLINE ; which ends where " /D=" begins
    StrCpy $0 $0 "" $1
    StrCpy $0 $0 "" 4
    StrLen $1 $INSTDIR
    StrCpy $1 $0 $1
    ${If} ${Silent}
    ${AndIf} $0 != ""
    ${AndIf} $1 != $INSTDIR
        ${NoteTrouble} ${CANNOT_WRITE} "The folder $0 cannot be made."
    ${EndIf}
FunctionEnd

; What lies there without an earlier version is somebody else's, whatever its name: it would be
; overwritten now and deleted in the end.
!macro CheckIsNotThere FILE
    ${If} ${FileExists} "$INSTDIR\${FILE}"
        ${NoteTrouble} ${CANNOT_WRITE} "$INSTDIR\${FILE} is there already and is not this \
            program's. Choose another folder."
    ${EndIf}
!macroend

!macro CheckInstalledFile FILE
    !insertmacro CheckFile "" "$INSTDIR\${FILE}" "the program that uses it"
!macroend

Function CheckFiles
    ${If} $INSTDIR != $EarlierFolder
        !insertmacro FOR_EACH_FILE CheckIsNotThere
        !insertmacro CheckIsNotThere "${UNINSTALLER}"
    ${EndIf}
    !insertmacro CheckFile "" "$HostFolder\${LIBRARY}" "Mastercam"
    ${If} $EarlierHostFolder != ""
        !insertmacro CheckFile "" "$EarlierHostFolder\${LIBRARY}" "Mastercam"
    ${EndIf}
    !insertmacro FOR_EACH_FILE CheckInstalledFile
    !insertmacro CheckInstalledFile "${UNINSTALLER}"
FunctionEnd

!macro MakeInstalledFolder FOLDER
    ${MakeFolder} "$INSTDIR\${FOLDER}"
!macroend

!macro WriteBeside FILE PLACE
    ClearErrors
    File "/oname=${PLACE}.new" "${PACKAGE}\${FILE}"
    ${If} ${Errors}
        ${NoteTrouble} ${CANNOT_WRITE} "${PLACE} cannot be written."
    ${EndIf}
!macroend

!macro WriteInstalledFileBeside FILE
    !insertmacro WriteBeside "${FILE}" "$INSTDIR\${FILE}"
!macroend

Function WriteBesidePlaces
    StrCpy $HasBegun 1
    SetOverwrite try
    EnumRegValue $0 HKLM "${ENTRY}" 0
    EnumRegKey $1 HKLM "${ENTRY}" 0
    ${If} "$0$1" == ""
        StrCpy $HasMadeEntry 1
    ${EndIf}
    ClearErrors
    WriteRegStr HKLM "${ENTRY}" "Publisher" "TORVA AS"
    ${If} ${Errors}
        ${NoteTrouble} ${CANNOT_WRITE} "The list of the installed programs cannot be written."
        Return
    ${EndIf}
    ${MakeFolder} "$HostFolder\${HOOKS}"
    ${MakeFolder} $INSTDIR
    !insertmacro FOR_EACH_FOLDER MakeInstalledFolder
    ${If} $Trouble <> 0
        Return
    ${EndIf}
    !insertmacro WriteBeside "torvapdm.dll" "$HostFolder\${LIBRARY}"
    !insertmacro FOR_EACH_FILE WriteInstalledFileBeside
    ClearErrors
    WriteUninstaller "$INSTDIR\${UNINSTALLER}.new"
    ${If} ${Errors}
        ${NoteTrouble} ${CANNOT_WRITE} "$INSTDIR\${UNINSTALLER} cannot be written."
    ${EndIf}
FunctionEnd

; Every version's uninstaller understands /KEEPENTRY: the files go, the entry and the folders stay.
; A copy of it runs, so that it can delete itself.
Function RemoveEarlierVersion
    ${If} $EarlierFolder == ""
        Return
    ${EndIf}
    ${IfNot} ${FileExists} "$EarlierFolder\${UNINSTALLER}"
        ${If} $EarlierHostFolder != ""
            Delete "$EarlierHostFolder\${LIBRARY}"
        ${EndIf}
        Return
    ${EndIf}
    CopyFiles /SILENT "$EarlierFolder\${UNINSTALLER}" "$PLUGINSDIR\earlier.exe"
    ClearErrors
    ExecWait '"$PLUGINSDIR\earlier.exe" /S /KEEPENTRY _?=$EarlierFolder' $0
    ${If} ${Errors}
        StrCpy $0 ${CANNOT_WRITE}
    ${EndIf}
    ${If} $0 = ${IN_USE}
        ${NoteTrouble} ${IN_USE} "The earlier version${IN_USE_TEXT}Mastercam and try again."
    ${ElseIf} $0 <> 0
        ${NoteTrouble} $0 "The earlier version in $EarlierFolder cannot be removed."
    ${EndIf}
FunctionEnd

!macro PutFileInPlace PLACE
    ClearErrors
    Delete "${PLACE}"
    Rename "${PLACE}.new" "${PLACE}"
    ${If} ${Errors}
        ${NoteTrouble} ${CANNOT_WRITE} "${PLACE} cannot be replaced."
    ${EndIf}
!macroend

!macro PutInstalledFileInPlace FILE
    !insertmacro PutFileInPlace "$INSTDIR\${FILE}"
!macroend

; The uninstaller first, so that what is in place can always be removed again.
Function PutInPlace
    !insertmacro PutInstalledFileInPlace "${UNINSTALLER}"
    !insertmacro FOR_EACH_FILE PutInstalledFileInPlace
    !insertmacro PutFileInPlace "$HostFolder\${LIBRARY}"
FunctionEnd

Function WriteEntry
    SectionGetSize 0 $0
    WriteRegStr HKLM "${ENTRY}" "DisplayName" "${PRODUCT}"
    WriteRegStr HKLM "${ENTRY}" "DisplayVersion" "${VERSION}"
    WriteRegStr HKLM "${ENTRY}" "InstallLocation" "$INSTDIR"
    WriteRegStr HKLM "${ENTRY}" "HostFolder" "$HostFolder"
    WriteRegStr HKLM "${ENTRY}" "UninstallString" '"$INSTDIR\${UNINSTALLER}"'
    WriteRegStr HKLM "${ENTRY}" "QuietUninstallString" '"$INSTDIR\${UNINSTALLER}" /S'
    WriteRegDWORD HKLM "${ENTRY}" "EstimatedSize" $0
    WriteRegDWORD HKLM "${ENTRY}" "NoModify" 1
    WriteRegDWORD HKLM "${ENTRY}" "NoRepair" 1
    StrCpy $HasMadeEntry 0 ; from here on the entry stays, whatever comes
FunctionEnd

Function EndInTrouble
    ${If} $Trouble <> 0
        Call TakeBack
        SetErrorLevel $Trouble
        ${ShowTrouble}
        Abort $TroubleText
    ${EndIf}
FunctionEnd

!macro DeleteNewFile FILE
    Delete "$INSTDIR\${FILE}.new"
!macroend

Function TakeBack
    ${If} $HasBegun = 0
        Return
    ${EndIf}
    StrCpy $HasBegun 0
    Delete "$HostFolder\${LIBRARY}.new"
    !insertmacro FOR_EACH_FILE DeleteNewFile
    !insertmacro DeleteNewFile "${UNINSTALLER}"
    Call RemoveEmptyFolders
    ${If} $HasMadeEntry = 1
        DeleteRegKey HKLM "${ENTRY}"
    ${EndIf}
FunctionEnd

Function .onInstFailed ; which is also where a full disk ends
    Call TakeBack
FunctionEnd

Function un.onInit
    StrCpy $Trouble 0
    ${GetParameters} $0
    ClearErrors
    ${GetOptions} $0 "/KEEPENTRY" $1
    StrCpy $KeepsEntry 1
    ${If} ${Errors}
        StrCpy $KeepsEntry 0
        Call un.EndUnlessAlone ; the setup that it runs for holds the place for both
    ${EndIf}
    Call un.ReadEntry
FunctionEnd

; The entry may be that of another folder, when this uninstaller was left over in its own: then
; neither the library nor the entry is its to remove.
Function un.ReadEntry
    StrCpy $0 $INSTDIR 1 -1
    ${If} $0 == "\"
        StrCpy $INSTDIR $INSTDIR -1
    ${EndIf}
    ReadRegStr $0 HKLM "${ENTRY}" "InstallLocation"
    ${If} $0 == $INSTDIR
        ReadRegStr $HostFolder HKLM "${ENTRY}" "HostFolder"
    ${Else}
        StrCpy $KeepsEntry 1
    ${EndIf}
FunctionEnd

Section Uninstall
    SetOutPath $TEMP ; nobody removes the folder that he works in
    Call un.CheckFiles
    Call un.EndInTrouble
    Call un.DeleteFiles
    Call un.EndInTrouble
    ${If} $KeepsEntry = 0
        Call un.RemoveEmptyFolders
        DeleteRegKey HKLM "${ENTRY}"
    ${EndIf}
SectionEnd

!macro CheckInstalledFileAgain FILE
    !insertmacro CheckFile "un." "$INSTDIR\${FILE}" "the program that uses it"
!macroend

Function un.CheckFiles
    ${If} $HostFolder != "" ; which the entry alone tells
        !insertmacro CheckFile "un." "$HostFolder\${LIBRARY}" "Mastercam"
    ${EndIf}
    !insertmacro FOR_EACH_FILE CheckInstalledFileAgain
FunctionEnd

!macro DeleteInstalledFile FILE
    Delete "$INSTDIR\${FILE}"
!macroend

; The library first: Mastercam may have been started a moment ago. The uninstaller last and only
; after all others, so that what is left can still be uninstalled.
Function un.DeleteFiles
    ClearErrors
    ${If} $HostFolder != ""
        Delete "$HostFolder\${LIBRARY}"
    ${EndIf}
    ${If} ${Errors}
        ${NoteTrouble} ${IN_USE} "$HostFolder\${LIBRARY}${IN_USE_TEXT}Mastercam and try again."
        Return
    ${EndIf}
    !insertmacro FOR_EACH_FILE DeleteInstalledFile
    ${If} ${Errors}
        ${NoteTrouble} ${CANNOT_WRITE} "Some files in $INSTDIR cannot be deleted."
        Return
    ${EndIf}
    Delete "$INSTDIR\${UNINSTALLER}"
FunctionEnd

Function un.EndInTrouble
    ${If} $Trouble <> 0
        SetErrorLevel $Trouble
        ${ShowTrouble}
        Abort $TroubleText
    ${EndIf}
FunctionEnd
