; The log: a line for each thing that setup or the uninstaller does, in UTF-16 with a byte-order mark, as
; Windows Installer writes its logs. A run appends to an existing log: deployment tools try again after an
; error, and the reason of the first failure must remain.
!define /ifndef OPEN_ALWAYS 4
!define /ifndef FILE_FLAG_OPEN_REPARSE_POINT 0x00200000
!define FILE_INFORMATION_SIZE 52 ; BY_HANDLE_FILE_INFORMATION
!define NUMBER_OF_LINKS_OFFSET 40

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
; Forgets the log's name if the file cannot be written, or if it is a link. All users can create files in some
; folders, among them that of the system account for temporary files, and could make this program, with its
; rights, write to another file. The handle stays open until this program ends: meanwhile nobody can put
; another file in the log's place.
Function ${UN}CheckLog
    System::Store S
    StrCpy $9 "cannot be written"
    StrCpy $1 $LogFile
    System::Call 'kernel32::CreateFileW(w r1, i ${GENERIC_READ}, i ${FILE_SHARE_READ}|${FILE_SHARE_WRITE}, \
        p 0, i ${OPEN_ALWAYS}, i ${FILE_FLAG_OPEN_REPARSE_POINT}, p 0) p .r0'
    ${If} $0 P<> ${INVALID_HANDLE_VALUE}
        System::Alloc ${FILE_INFORMATION_SIZE}
        Pop $2
        System::Call 'kernel32::GetFileInformationByHandle(p r0, p r2) i .r3'
        System::Call '*$2(&i4 .r4)'
        IntOp $4 $4 & ${FILE_ATTRIBUTE_REPARSE_POINT}
        IntPtrOp $5 $2 + ${NUMBER_OF_LINKS_OFFSET}
        System::Call '*$5(&i4 .r5)'
        System::Free $2
        ${If} $3 <> 0
            ${If} $4 <> 0
            ${OrIf} $5 > 1
                StrCpy $9 "is a link"
            ${Else}
                ClearErrors
                FileOpen $6 $LogFile a
                ${IfNot} ${Errors}
                    FileClose $6
                    StrCpy $9 ""
                ${EndIf}
            ${EndIf}
        ${EndIf}
        ${If} $9 != ""
            System::Call 'kernel32::CloseHandle(p r0)'
        ${EndIf}
    ${EndIf}
    ${If} $9 != ""
        StrCpy $LogProblem "$LogProblem The log $LogFile $9."
        StrCpy $LogFile ""
    ${EndIf}
    System::Store L
FunctionEnd

; Uses the file of the option /LOG=, or the default in the folder for temporary files. That a log cannot be
; written is no error: it is shown, or printed by a silent run.
Function ${UN}OpenLog
    StrCpy $HasLoggedExit 0
    StrCpy $LogProblem ""
    ${ReadOption} "/LOG=" $LogFile
    ${If} $LogFile != ""
        StrCpy $0 $LogFile
        System::Call 'kernel32::GetFullPathNameW(w r0, i ${NSIS_MAX_STRLEN}, w .r1, p 0) i .r2'
        ${If} $2 > 0
        ${AndIf} $2 < ${NSIS_MAX_STRLEN}
            StrCpy $LogFile $1
        ${EndIf}
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
