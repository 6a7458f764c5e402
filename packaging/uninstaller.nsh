; The uninstaller. A later setup runs it too, with /KEEPENTRY.

Function un.onInit
    StrCpy $ErrorCode 0
    Call un.ShowHelp
    Call un.OpenLog
    ${ReadOption} "/KEEPENTRY" $0
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
        ${Log} "Removed the entry in the list of installed programs"
    ${EndIf}
    ${LogExit} 0 "The add-in is uninstalled."
SectionEnd

!macro CheckFileToRemove FILE
    !insertmacro CheckFile "un." "$INSTDIR\${FILE}" "the program that uses it"
!macroend

Function un.CheckFiles
    ${If} $HostFolder != "" ; only known from the entry
        !insertmacro CheckFile "un." "$HostFolder\${LIBRARY}" "Mastercam"
    ${EndIf}
    !insertmacro FOR_EACH_FILE CheckFileToRemove
FunctionEnd

!macro DeleteInstalledFile FILE
    Push "$INSTDIR\${FILE}"
    Call un.DeleteFile
!macroend

; The DLL first: Mastercam may have been started in the meantime. The uninstaller last and only if all
; others are deleted, so that the remaining files can still be uninstalled.
Function un.DeleteFiles
    ${If} $HostFolder != ""
        Push "$HostFolder\${LIBRARY}"
        Call un.DeleteFile
    ${EndIf}
    ${If} $ErrorCode <> 0
        Return
    ${EndIf}
    !insertmacro FOR_EACH_FILE DeleteInstalledFile
    ${If} $ErrorCode <> 0
        Return
    ${EndIf}
    Delete "$INSTDIR\${UNINSTALLER}"
    ${IfNot} ${FileExists} "$INSTDIR\${UNINSTALLER}"
        ${Log} "Removed $INSTDIR\${UNINSTALLER}"
    ${ElseIf} $EXEFILE == "${UNINSTALLER}" ; otherwise a copy of it runs
        ${Log} "Left $INSTDIR\${UNINSTALLER}: a running program cannot delete itself"
    ${Else}
        ${Log} "Left $INSTDIR\${UNINSTALLER}: it cannot be deleted"
    ${EndIf}
FunctionEnd

Function un.AbortAfterError
    ${If} $ErrorCode <> 0
        Call un.WriteErrorFile
        ${LogExit} $ErrorCode "The add-in is not uninstalled."
        SetErrorLevel $ErrorCode
        ${ShowError}
        Abort $ErrorText
    ${EndIf}
FunctionEnd

; For the setup that runs this uninstaller.
Function un.WriteErrorFile
    ${ReadOption} "/ERRORFILE=" $0
    ${If} $0 != ""
        FileOpen $1 $0 w
        FileWriteUTF16LE $1 $ErrorText
        FileClose $1
    ${EndIf}
FunctionEnd

Function un.onUninstFailed
    ${LogExit} ${FAILED} "The uninstaller failed."
FunctionEnd

Function un.LogCancelling
    ${LogExit} ${CANCELLED} "Cancelled by the user."
FunctionEnd
