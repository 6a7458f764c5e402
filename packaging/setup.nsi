; The setup program. Installs the DLL as a command hook of Mastercam, and the support tool and the
; documentation in their own folder, for all users of the machine.
;
; Setup changes no installed file before every new file is written under a temporary name and every old
; one is known to be replaceable. An earlier version is removed by its own uninstaller, which knows its files.
;
; packaging/pack defines VERSION, HOST (the host that the DLL was built for), PACKAGE (the folder with the files
; to install), FILES (their list) and SETUP (the output file), and SIGN (the program that signs the uninstaller)
; if the package is signed.
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

!define ADD_IN "TORVA ZEM add-in"
!define PRODUCT "${ADD_IN} for ${HOST}"
; The same for every host, so that a package for one replaces a package for another.
!define ENTRY "Software\Microsoft\Windows\CurrentVersion\Uninstall\TORVA ZEM add-in for Mastercam"
!define HOOKS "chooks" ; the folder of command hooks, in Mastercam's folder
!define LIBRARY "${HOOKS}\torvapdm.dll"
!define UNINSTALLER "uninstall.exe"
!define WEB_SITE "https://torva.example"
!searchparse "${VERSION}" "" VERSION_MAJOR "." VERSION_MINOR "."

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
!define COMPANY "TORVA AS"
!define DESCRIPTION_START "Setup of the ${ADD_IN} for "
VIAddVersionKey "CompanyName" "${COMPANY}"
VIAddVersionKey "FileDescription" "${DESCRIPTION_START}${HOST}"
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
Var HasLeftUninstaller ; in the install folder, from an earlier installation

!include options.nsh
!include log.nsh
!include processes.nsh
!include errors.nsh
!include single_instance.nsh
!include folders.nsh
!include help.nsh
!include left_uninstaller.nsh
!include check.nsh
!include host_folder.nsh
!include setup_pages.nsh

Function .onInit
    StrCpy $ErrorCode 0
    StrCpy $HasStartedWriting 0
    StrCpy $HasMadeEntry 0
    StrCpy $HasLeftUninstaller 0
    Call ShowHelp
    Call OpenLog
    Call EnsureSingleInstance
    ReadRegStr $EarlierFolder HKLM "${ENTRY}" "InstallLocation"
    ReadRegStr $EarlierHostFolder HKLM "${ENTRY}" "HostFolder"
    ${ReadOption} "/HOST=" $HostFolder
    ${If} ${Errors}
        StrCpy $HostFolder $EarlierHostFolder
    ${EndIf}
    ${If} $HostFolder == ""
    ${AndIfNot} ${Silent}
        Call OfferRunningHost
    ${EndIf}
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
    Call LogChoices
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
    ${LogExit} 0 "The add-in is installed."
SectionEnd

Function LogChoices
    ReadRegStr $0 HKLM "${ENTRY}" "DisplayVersion"
    ${Log} "Mastercam's folder: $HostFolder"
    ${Log} "Install folder: $INSTDIR"
    ${If} $EarlierFolder == ""
        ${Log} "Earlier version: none"
    ${Else}
        ${Log} "Earlier version: $0 in $EarlierFolder, for Mastercam in $EarlierHostFolder"
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

; An uninstaller that was run in its folder stays there: it cannot delete itself.
Function CheckUninstaller
    Push "$INSTDIR\${UNINSTALLER}"
    Call IsOwnUninstaller
    Pop $HasLeftUninstaller
    ${If} $HasLeftUninstaller = 0
        !insertmacro CheckDoesNotExist "${UNINSTALLER}"
    ${EndIf}
FunctionEnd

!macro CheckInstalledFile FILE
    !insertmacro CheckFile "" "$INSTDIR\${FILE}" "the program that uses it"
!macroend

Function CheckFiles
    ${If} $INSTDIR != $EarlierFolder
        !insertmacro FOR_EACH_FILE CheckDoesNotExist
        Call CheckUninstaller
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
    ${Log} "Writing the new files under temporary names"
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
    ${If} $HasLeftUninstaller = 1 ; an earlier setup made the folder or used it
        WriteRegStr HKLM "${MADE_FOLDERS}" $INSTDIR ""
    ${EndIf}
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
; folders. A copy of it runs, so that it can delete itself. It writes to the same log, and the reason of an
; error to a file of its own.
Function RemoveEarlierVersion
    ${If} $EarlierFolder == ""
        Return
    ${EndIf}
    ${Log} "Removing the earlier version"
    ${IfNot} ${FileExists} "$EarlierFolder\${UNINSTALLER}"
        ${If} $EarlierHostFolder != ""
            Push "$EarlierHostFolder\${LIBRARY}"
            Call DeleteFile
        ${EndIf}
        Return
    ${EndIf}
    CopyFiles /SILENT "$EarlierFolder\${UNINSTALLER}" "$PLUGINSDIR\earlier.exe"
    StrCpy $1 ""
    ${If} $LogFile != ""
        StrCpy $1 '/LOG="$LogFile"'
    ${EndIf}
    StrCpy $2 "$PLUGINSDIR\earlier.txt"
    ClearErrors
    ExecWait '"$PLUGINSDIR\earlier.exe" /S /KEEPENTRY $1 /ERRORFILE="$2" _?=$EarlierFolder' $0
    ${If} ${Errors}
        StrCpy $0 ${CANNOT_WRITE}
    ${EndIf}
    ${If} $0 <> 0
        StrCpy $3 "The earlier version in $EarlierFolder cannot be removed."
        ${If} ${FileExists} $2
            FileOpen $4 $2 r
            FileReadUTF16LE $4 $3
            FileClose $4
        ${EndIf}
        ${If} $0 <> ${IN_USE} ; another code is that of a program that cannot run, or of its crash
            StrCpy $0 ${CANNOT_WRITE}
        ${EndIf}
        ${RecordError} $0 "$3"
    ${EndIf}
FunctionEnd

Function PutFileInPlace
    Exch $0
    Push $1
    StrCpy $1 "Wrote"
    ${If} ${FileExists} $0
        StrCpy $1 "Replaced"
    ${EndIf}
    ClearErrors
    Delete $0
    Rename "$0.new" $0
    ${If} ${Errors}
        ${RecordError} ${CANNOT_WRITE} "$0 cannot be replaced."
    ${Else}
        ${Log} "$1 $0"
    ${EndIf}
    Pop $1
    Pop $0
FunctionEnd

!macro PutFileInPlace PLACE
    Push "${PLACE}"
    Call PutFileInPlace
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
    ${GetTime} "" "L" $1 $2 $3 $4 $5 $6 $7 ; day, month, year
    WriteRegStr HKLM "${ENTRY}" "DisplayName" "${PRODUCT}"
    WriteRegStr HKLM "${ENTRY}" "DisplayVersion" "${VERSION}"
    WriteRegDWORD HKLM "${ENTRY}" "VersionMajor" ${VERSION_MAJOR}
    WriteRegDWORD HKLM "${ENTRY}" "VersionMinor" ${VERSION_MINOR}
    WriteRegStr HKLM "${ENTRY}" "DisplayIcon" "$INSTDIR\${UNINSTALLER},0"
    WriteRegStr HKLM "${ENTRY}" "Comments" "Connects Mastercam to TORVA ZEM"
    WriteRegStr HKLM "${ENTRY}" "Readme" "$INSTDIR\manual.html"
    WriteRegStr HKLM "${ENTRY}" "URLInfoAbout" "${WEB_SITE}"
    WriteRegStr HKLM "${ENTRY}" "HelpLink" "${WEB_SITE}"
    WriteRegStr HKLM "${ENTRY}" "InstallDate" "$3$2$1"
    WriteRegStr HKLM "${ENTRY}" "InstallLocation" "$INSTDIR"
    WriteRegStr HKLM "${ENTRY}" "HostFolder" "$HostFolder"
    WriteRegStr HKLM "${ENTRY}" "UninstallString" '"$INSTDIR\${UNINSTALLER}"'
    WriteRegStr HKLM "${ENTRY}" "QuietUninstallString" '"$INSTDIR\${UNINSTALLER}" /S'
    WriteRegDWORD HKLM "${ENTRY}" "EstimatedSize" $0
    WriteRegDWORD HKLM "${ENTRY}" "NoModify" 1
    WriteRegDWORD HKLM "${ENTRY}" "NoRepair" 1
    ${Log} "Wrote the entry in the list of installed programs"
    StrCpy $HasMadeEntry 0 ; from here on the entry stays, even after an error
FunctionEnd

Function AbortAfterError
    ${If} $ErrorCode <> 0
        Call RollBack
        ${LogExit} $ErrorCode "The add-in is not installed."
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
    ${Log} "Removed the new files"
FunctionEnd

Function .onInstFailed ; also called when the disk is full
    Call RollBack
    ${LogExit} ${FAILED} "Setup failed."
FunctionEnd

Function LogCancelling
    ${LogExit} ${CANCELLED} "Cancelled by the user."
FunctionEnd

!include uninstaller.nsh
