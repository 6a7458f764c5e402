; The pages of the setup program and of the uninstaller.
Var FinishText

!define MUI_ICON art/setup.ico
!define MUI_UNICON art/setup.ico
!define MUI_HEADERIMAGE
!define MUI_HEADERIMAGE_RIGHT
!define MUI_HEADERIMAGE_BITMAP art/header.bmp
!define MUI_WELCOMEFINISHPAGE_BITMAP art/side.bmp
!define MUI_CUSTOMFUNCTION_ABORT LogCancelling
!define MUI_CUSTOMFUNCTION_UNABORT un.LogCancelling

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

!define MUI_FINISHPAGE_TITLE "The add-in is installed"
!define MUI_FINISHPAGE_TEXT_LARGE
!define MUI_FINISHPAGE_TEXT "$FinishText"
!define MUI_PAGE_CUSTOMFUNCTION_PRE SetFinishText
!define MUI_FINISHPAGE_RUN
!define MUI_FINISHPAGE_RUN_TEXT "Check the installation"
!define MUI_FINISHPAGE_RUN_NOTCHECKED
!define MUI_FINISHPAGE_RUN_FUNCTION CheckInstallation
!define MUI_FINISHPAGE_NOREBOOTSUPPORT
!insertmacro MUI_PAGE_FINISH

!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE English

Function SetFinishText
    StrCpy $FinishText "To check the installation later, run $\"zemlink doctor$\" in a command prompt, in the \
        folder $INSTDIR."
    ${If} $LogFile != ""
        StrCpy $FinishText "What setup did is in the log $LogFile.$\r$\n$\r$\n$FinishText"
    ${EndIf}
FunctionEnd
