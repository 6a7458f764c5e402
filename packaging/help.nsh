; The options and exit codes, shown by /?.

!macro DefineShowHelp UN TEXT
; With /? or /HELP, shows the options and exit codes and exits.
Function ${UN}ShowHelp
    ${ReadOption} "/?" $0
    ${If} ${Errors}
        ${ReadOption} "/HELP" $0
    ${EndIf}
    ${If} ${Errors}
        Return
    ${EndIf}
    ${If} ${Silent}
        Push "${TEXT}"
        Call ${UN}Print
        ${If} ${Errors}
            Call ${UN}OpenLog
            ${Log} "${TEXT}"
        ${EndIf}
    ${Else}
        MessageBox MB_OK "${TEXT}"
    ${EndIf}
    SetErrorLevel 0
    Quit
FunctionEnd
!macroend

!define EXIT_CODES "\
    Exit codes:$\r$\n\
    0  done$\r$\n\
    1  cancelled$\r$\n\
    2  setup failed: it is damaged, or the disk is full$\r$\n\
    3  there is no Mastercam.exe in the folder$\r$\n\
    4  a file is in use, or another setup is running$\r$\n\
    5  a file, a folder or the entry cannot be written"
!insertmacro DefineShowHelp "" "Setup of the ${PRODUCT}, version ${VERSION}$\r$\n\
    $\r$\n\
    /S$\t$\tno windows$\r$\n\
    /HOST=FOLDER$\tMastercam's folder$\r$\n\
    /LOG=FILE$\tadd to this log$\r$\n\
    /D=FOLDER$\tinstall folder; last, no quotes$\r$\n\
    /?$\t$\tthis list; nothing is installed$\r$\n\
    $\r$\n\
    Without /LOG, the log is torvapdm-setup.log in the folder for temporary files.$\r$\n\
    $\r$\n\
    ${EXIT_CODES}"
!insertmacro DefineShowHelp "un." "Uninstaller of the ${PRODUCT}, version ${VERSION}$\r$\n\
    $\r$\n\
    /S$\t$\tno windows$\r$\n\
    /LOG=FILE$\tadd to this log$\r$\n\
    _?=FOLDER$\trun in its folder; last, no quotes$\r$\n\
    /?$\t$\tthis list; nothing is removed$\r$\n\
    $\r$\n\
    Without /LOG, the log is torvapdm-uninstall.log in the folder for temporary files.$\r$\n\
    $\r$\n\
    ${EXIT_CODES}"
