; The log: a line for each thing that setup or the uninstaller does, in UTF-16 with a byte-order mark, as
; Windows Installer writes its logs. A run appends to an existing log: deployment tools try again after an
; error, and the reason of the first failure must remain.
Var LogFile ; empty if no log can be written
Var LogProblem
Var HasLoggedExit

!macro Log TEXT
    Push "${TEXT}"
    !ifdef __UNINSTALL__
        Call un.Log
    !else
        Call Log
    !endif
!macroend
!define Log "!insertmacro Log"

; LogExit CODE TEXT: the last line of a run. What the user does afterwards does not change the outcome.
!macro LogExit CODE TEXT
    ${If} $HasLoggedExit = 0
        StrCpy $HasLoggedExit 1
        ${Log} "${TEXT} Exit code ${CODE}."
    ${EndIf}
!macroend
!define LogExit "!insertmacro LogExit"

!macro DefineLog UN
; Pops a text. Keeps the error flag. The file is opened for each line, so that setup and the uninstaller
; of the earlier version, which it runs, write the same log.
Function ${UN}Log
    System::Store S
    Pop $7
    StrCpy $9 0
    ${If} ${Errors}
        StrCpy $9 1
    ${EndIf}
    ${If} $LogFile != ""
        ${GetTime} "" "L" $0 $1 $2 $3 $4 $5 $6 ; day, month, year, name of the day, hour, minute, second
        FileOpen $8 $LogFile a
        FileSeek $8 0 END
        ; In parts: NSIS cuts a text at its maximum length, and the line needs its end.
        FileWriteUTF16LE /BOM $8 "$2-$1-$0 $4:$5:$6  "
        FileWriteUTF16LE $8 $7
        StrLen $0 $7
        IntOp $0 $0 + 1
        ${If} $0 >= ${NSIS_MAX_STRLEN}
            FileWriteUTF16LE $8 " (cut here)"
        ${EndIf}
        FileWriteUTF16LE $8 "$\r$\n"
        FileClose $8
    ${EndIf}
    ClearErrors
    ${If} $9 = 1
        SetErrors
    ${EndIf}
    System::Store L
FunctionEnd
!macroend
!insertmacro DefineLog ""
!insertmacro DefineLog "un."

!macro DefineOpenLog UN NAME TITLE
; Forgets the log's name if the file cannot be written.
Function ${UN}CheckLog
    Push $0
    ClearErrors
    FileOpen $0 $LogFile a
    ${If} ${Errors}
        StrCpy $LogProblem "$LogProblem The log $LogFile cannot be written."
        StrCpy $LogFile ""
    ${Else}
        FileClose $0
    ${EndIf}
    Pop $0
FunctionEnd

; Uses the file of the option /LOG=, or the default in the folder for temporary files. That a log cannot be
; written is no error: it is shown, or printed by a silent run.
Function ${UN}OpenLog
    StrCpy $HasLoggedExit 0
    StrCpy $LogProblem ""
    ${ReadOption} "/LOG=" $LogFile
    ${If} $LogFile != ""
        System::Call 'kernel32::GetFullPathNameW(w "$LogFile", i ${NSIS_MAX_STRLEN}, w .r0, p 0) i .r1'
        StrCpy $LogFile $0
        Call ${UN}CheckLog
    ${EndIf}
    ${If} $LogFile == ""
        StrCpy $LogFile "$TEMP\${NAME}"
        Call ${UN}CheckLog
    ${EndIf}
    System::Call 'kernel32::GetCommandLineW() t .r0'
    ${Log} "${TITLE} of the ${PRODUCT}, version ${VERSION}"
    ${Log} "Command line: $0"
    ${If} $LogProblem != ""
        StrCpy $LogProblem $LogProblem "" 1
        ${If} $LogFile != ""
            StrCpy $LogProblem "$LogProblem The log is $LogFile."
        ${EndIf}
        ${Log} "$LogProblem"
        ${If} ${Silent}
            Push $LogProblem
            Call ${UN}Print
        ${Else}
            MessageBox MB_OK|MB_ICONINFORMATION "$LogProblem"
        ${EndIf}
    ${EndIf}
FunctionEnd
!macroend
!insertmacro DefineOpenLog "" "torvapdm-setup.log" "Setup"
!insertmacro DefineOpenLog "un." "torvapdm-uninstall.log" "Uninstaller"
