; The setup program. Installs the DLL as a command hook of Mastercam, and the support tool and the
; documentation in their own folder, for all users of the machine.
;
; Setup changes no installed file before every new file is written under a temporary name and every old
; one is known to be replaceable. An earlier version is removed by its own uninstaller, which knows its files.
;
; packaging/pack defines VERSION, HOST (the host that the DLL was built for), PACKAGE (the folder with the files to install), FILES (their list) and
; SETUP (the output file), and SIGN (the program that signs the uninstaller) if the package is signed.
Target amd64-unicode
SetCompressor /SOLID lzma
SetDateSave off ; reproducible output
RequestExecutionLevel admin
ManifestDPIAware true

!include FileFunc.nsh
!include LogicLib.nsh
!include MUI2.nsh
!include WinCore.nsh
!include Win\WinError.nsh
!include "${FILES}"

!define PRODUCT "TORVA ZEM add-in for ${HOST}"
; The same for every host, so that a package for one replaces a package for another.
!define ENTRY "Software\Microsoft\Windows\CurrentVersion\Uninstall\TORVA ZEM add-in for Mastercam"
!define HOOKS "chooks" ; the folder of command hooks, in Mastercam's folder
!define LIBRARY "${HOOKS}\torvapdm.dll"
!define QUOTED_HOST ' "/HOST='
!define QUOTED_HOST_LENGTH 8
!define UNINSTALLER "uninstall.exe"

Name "${PRODUCT}"
OutFile "${SETUP}"
BrandingText "${PRODUCT} ${VERSION}"
InstallDir "$PROGRAMFILES64\TORVA AS\ZEM add-in"
InstallDirRegKey HKLM "${ENTRY}" "InstallLocation"
SpaceTexts none
!ifdef SIGN
    !uninstfinalize '"${SIGN}" "%1"' = 0
!endif

VIProductVersion "${VERSION}.0"
VIFileVersion "${VERSION}.0"
VIAddVersionKey "CompanyName" "TORVA AS"
VIAddVersionKey "FileDescription" "Setup of the ${PRODUCT}"
VIAddVersionKey "FileVersion" "${VERSION}"
VIAddVersionKey "LegalCopyright" "TORVA AS"
VIAddVersionKey "ProductName" "TORVA ZEM"
VIAddVersionKey "ProductVersion" "${VERSION}"

Var HostFolder
Var EarlierFolder ; of the installed version, or empty
Var EarlierHostFolder
Var HasStartedWriting ; there is something to roll back
Var HasMadeEntry ; rolling back removes the entry
Var KeepsEntry

!include errors.nsh
!include single_instance.nsh
!include folders.nsh

!define MUI_ICON "${NSISDIR}/Contrib/Graphics/Icons/box-install.ico"
!define MUI_UNICON "${NSISDIR}/Contrib/Graphics/Icons/box-uninstall.ico"

!if "${HOST}" == "the stand-in host"
    !define PURPOSE "This package is for the stand-in host, for tests and integration. Mastercam cannot load \
        its add-in. "
!else
    !define PURPOSE ""
!endif

!define MUI_PAGE_HEADER_TEXT "Mastercam's folder"
!define MUI_PAGE_HEADER_SUBTEXT "Where is Mastercam installed?"
!define MUI_DIRECTORYPAGE_TEXT_TOP "${PURPOSE}Setup installs the add-in as a command hook, in the folder ${HOOKS} of \
    Mastercam. Choose the folder that contains Mastercam.exe, and close Mastercam."
!define MUI_DIRECTORYPAGE_TEXT_DESTINATION "Mastercam's folder"
!define MUI_DIRECTORYPAGE_VARIABLE $HostFolder
!define MUI_PAGE_CUSTOMFUNCTION_LEAVE LeaveHostPage
!insertmacro MUI_PAGE_DIRECTORY

!define MUI_PAGE_HEADER_TEXT "Support tool and documentation"
!define MUI_PAGE_HEADER_SUBTEXT "Choose the folder for zemlink.exe and the documentation."
!define MUI_DIRECTORYPAGE_TEXT_TOP "zemlink.exe shows the data exchanged between Mastercam and TORVA \
    ZEM and checks for common problems. Setup installs it in this folder together with the \
    documentation of the add-in."
!define MUI_PAGE_CUSTOMFUNCTION_LEAVE LeaveFolderPage
!insertmacro MUI_PAGE_DIRECTORY

!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE English

Function .onInit
    StrCpy $ErrorCode 0
    StrCpy $HasStartedWriting 0
    StrCpy $HasMadeEntry 0
    Call EnsureSingleInstance
    ReadRegStr $EarlierFolder HKLM "${ENTRY}" "InstallLocation"
    ReadRegStr $EarlierHostFolder HKLM "${ENTRY}" "HostFolder"
    Call ReadHostOption
FunctionEnd

; Without the option, the folder of the installed version.
Function ReadHostOption
    ${GetParameters} $0
    ${GetOptions} $0 "/HOST=" $HostFolder
    ${IfNot} ${Errors}
        Return
    ${EndIf}
    StrCpy $HostFolder $EarlierHostFolder
    StrCpy $0 " $0"
    StrCpy $1 0
    ${Do} ; GetOptions finds no option that starts inside quotes: "/HOST=C:\some folder"
        StrCpy $2 $0 ${QUOTED_HOST_LENGTH} $1
        ${If} $2 == '${QUOTED_HOST}'
            IntOp $1 $1 + ${QUOTED_HOST_LENGTH}
            StrCpy $0 $0 "" $1
            Call ReadUpToQuote
            Return
        ${EndIf}
        IntOp $1 $1 + 1
    ${LoopUntil} $2 == ""
FunctionEnd

Function ReadUpToQuote ; of $0, into $HostFolder
    StrCpy $1 -1
    ${Do}
        IntOp $1 $1 + 1
        StrCpy $2 $0 1 $1
        ${If} $2 == '"'
        ${OrIf} $2 == ""
            ${Break}
        ${EndIf}
    ${Loop}
    StrCpy $HostFolder $0 $1
FunctionEnd

Function LeaveHostPage
    Call CheckHostFolder
    ${StayOnPageAfterError}
FunctionEnd

Function LeaveFolderPage
    Call CheckFiles
    ${StayOnPageAfterError}
FunctionEnd

Section
    AddSize ${KILOBYTES}
    Call CheckNamedFolder
    Call CheckHostFolder
    Call CheckFiles
    Call AbortAfterError
    Call WriteNewFiles
    Call AbortAfterError
    Call RemoveEarlierVersion
    Call AbortAfterError
    Call WriteEntry
    Call PutInPlace
    Call AbortAfterError
    Call RemoveEmptyFolders ; of the earlier version that this one does not use
SectionEnd

Function CheckHostFolder
    StrCpy $0 $HostFolder "" 1
    ${If} $0 == ":" ; the page turns a drive's root into "C:", which is the drive's current folder
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
        ${RecordError} ${NO_HOST} "There is no Mastercam.exe in the folder $\"$HostFolder$\"."
    ${Else}
        StrCpy $HostFolder $0
    ${EndIf}
FunctionEnd

; NSIS has replaced a folder that cannot exist (on a missing drive or below a file) with the default. The
; page shows that to the user; a silent run must fail.
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
        ${RecordError} ${CANNOT_WRITE} "The folder $0 cannot be created."
    ${EndIf}
FunctionEnd

; Without an earlier version an existing file belongs to another program, whatever its name. Setup would
; overwrite it and the uninstaller would delete it.
!macro CheckDoesNotExist FILE
    ${If} ${FileExists} "$INSTDIR\${FILE}"
        ${RecordError} ${CANNOT_WRITE} "$INSTDIR\${FILE} already exists and does not belong to \
            this program. Choose another folder."
    ${EndIf}
!macroend

!macro CheckInstalledFile FILE
    !insertmacro CheckFile "" "$INSTDIR\${FILE}" "the program that uses it"
!macroend

Function CheckFiles
    ${If} $INSTDIR != $EarlierFolder
        !insertmacro FOR_EACH_FILE CheckDoesNotExist
        !insertmacro CheckDoesNotExist "${UNINSTALLER}"
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

!macro WriteNewFile FILE PLACE
    ClearErrors
    File "/oname=${PLACE}.new" "${PACKAGE}\${FILE}"
    ${If} ${Errors}
        ${RecordError} ${CANNOT_WRITE} "${PLACE} cannot be written."
    ${EndIf}
!macroend

!macro WriteNewInstalledFile FILE
    !insertmacro WriteNewFile "${FILE}" "$INSTDIR\${FILE}"
!macroend

Function WriteNewFiles
    StrCpy $HasStartedWriting 1
    SetOverwrite try
    EnumRegValue $0 HKLM "${ENTRY}" 0
    EnumRegKey $1 HKLM "${ENTRY}" 0
    ${If} "$0$1" == ""
        StrCpy $HasMadeEntry 1
    ${EndIf}
    ClearErrors
    WriteRegStr HKLM "${ENTRY}" "Publisher" "TORVA AS"
    ${If} ${Errors}
        ${RecordError} ${CANNOT_WRITE} "The list of installed programs cannot be written."
        Return
    ${EndIf}
    ${MakeFolder} "$HostFolder\${HOOKS}"
    ${MakeFolder} $INSTDIR
    !insertmacro FOR_EACH_FOLDER MakeInstalledFolder
    ${If} $ErrorCode <> 0
        Return
    ${EndIf}
    !insertmacro WriteNewFile "torvapdm.dll" "$HostFolder\${LIBRARY}"
    !insertmacro FOR_EACH_FILE WriteNewInstalledFile
    ClearErrors
    WriteUninstaller "$INSTDIR\${UNINSTALLER}.new"
    ${If} ${Errors}
        ${RecordError} ${CANNOT_WRITE} "$INSTDIR\${UNINSTALLER} cannot be written."
    ${EndIf}
FunctionEnd

; Every version's uninstaller supports /KEEPENTRY: it deletes the files and keeps the entry and the
; folders. A copy of it runs, so that it can delete itself.
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
        ${RecordError} ${IN_USE} "The earlier version${IN_USE_TEXT}Mastercam and try again."
    ${ElseIf} $0 <> 0
        ${RecordError} $0 "The earlier version in $EarlierFolder cannot be removed."
    ${EndIf}
FunctionEnd

!macro PutFileInPlace PLACE
    ClearErrors
    Delete "${PLACE}"
    Rename "${PLACE}.new" "${PLACE}"
    ${If} ${Errors}
        ${RecordError} ${CANNOT_WRITE} "${PLACE} cannot be replaced."
    ${EndIf}
!macroend

!macro PutInstalledFileInPlace FILE
    !insertmacro PutFileInPlace "$INSTDIR\${FILE}"
!macroend

; The uninstaller first, so that a partial installation can be removed.
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
    StrCpy $HasMadeEntry 0 ; from here on the entry stays, even after an error
FunctionEnd

Function AbortAfterError
    ${If} $ErrorCode <> 0
        Call RollBack
        SetErrorLevel $ErrorCode
        ${ShowError}
        Abort $ErrorText
    ${EndIf}
FunctionEnd

!macro DeleteNewFile FILE
    Delete "$INSTDIR\${FILE}.new"
!macroend

Function RollBack
    ${If} $HasStartedWriting = 0
        Return
    ${EndIf}
    StrCpy $HasStartedWriting 0
    Delete "$HostFolder\${LIBRARY}.new"
    !insertmacro FOR_EACH_FILE DeleteNewFile
    !insertmacro DeleteNewFile "${UNINSTALLER}"
    Call RemoveEmptyFolders
    ${If} $HasMadeEntry = 1
        DeleteRegKey HKLM "${ENTRY}"
    ${EndIf}
FunctionEnd

Function .onInstFailed ; also called when the disk is full
    Call RollBack
FunctionEnd

Function un.onInit
    StrCpy $ErrorCode 0
    ${GetParameters} $0
    ClearErrors
    ${GetOptions} $0 "/KEEPENTRY" $1
    StrCpy $KeepsEntry 1
    ${If} ${Errors}
        StrCpy $KeepsEntry 0
        Call un.EnsureSingleInstance ; with /KEEPENTRY the calling setup holds the mutex
    ${EndIf}
    Call un.ReadEntry
FunctionEnd

; An uninstaller that was left in its folder can find the entry of an installation in another folder.
; Then it must remove neither the DLL nor the entry.
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
    SetOutPath $TEMP ; the current folder cannot be removed
    Call un.CheckFiles
    Call un.AbortAfterError
    Call un.DeleteFiles
    Call un.AbortAfterError
    ${If} $KeepsEntry = 0
        Call un.RemoveEmptyFolders
        DeleteRegKey HKLM "${ENTRY}"
    ${EndIf}
SectionEnd

!macro CheckInstalledFileAgain FILE
    !insertmacro CheckFile "un." "$INSTDIR\${FILE}" "the program that uses it"
!macroend

Function un.CheckFiles
    ${If} $HostFolder != "" ; only known from the entry
        !insertmacro CheckFile "un." "$HostFolder\${LIBRARY}" "Mastercam"
    ${EndIf}
    !insertmacro FOR_EACH_FILE CheckInstalledFileAgain
FunctionEnd

!macro DeleteInstalledFile FILE
    Delete "$INSTDIR\${FILE}"
!macroend

; The DLL first: Mastercam may have been started in the meantime. The uninstaller last and only if all
; others are deleted, so that the remaining files can still be uninstalled.
Function un.DeleteFiles
    ClearErrors
    ${If} $HostFolder != ""
        Delete "$HostFolder\${LIBRARY}"
    ${EndIf}
    ${If} ${Errors}
        ${RecordError} ${IN_USE} "$HostFolder\${LIBRARY}${IN_USE_TEXT}Mastercam and try again."
        Return
    ${EndIf}
    !insertmacro FOR_EACH_FILE DeleteInstalledFile
    ${If} ${Errors}
        ${RecordError} ${CANNOT_WRITE} "Some files in $INSTDIR cannot be deleted."
        Return
    ${EndIf}
    Delete "$INSTDIR\${UNINSTALLER}"
FunctionEnd

Function un.AbortAfterError
    ${If} $ErrorCode <> 0
        SetErrorLevel $ErrorCode
        ${ShowError}
        Abort $ErrorText
    ${EndIf}
FunctionEnd
