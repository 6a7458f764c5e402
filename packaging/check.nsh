; The check that the last page offers: zemlink doctor in a console that stays open.

!define /ifndef CREATE_NEW_CONSOLE 0x10
!define /ifndef MAXIMUM_ALLOWED 0x02000000
!define SECURITY_IMPERSONATION 2
!define TOKEN_PRIMARY 1
!define /ifndef TOKEN_DUPLICATE 2
!define STARTUPINFO_SIZE 104
!define PROCESS_INFORMATION_SIZE 24

; Runs as the user of the desktop and not as the administrator who installs: the doctor reads the settings
; of its user, and a console that stays open must not have administrator rights. The token is that of the
; desktop's shell. Where there is no shell, as in a kiosk, or its token cannot be used, nothing is started.
Function CheckInstallation
    System::Store S
    StrCpy $9 '"$SYSDIR\cmd.exe" /k ""$INSTDIR\zemlink.exe" doctor"'
    System::Alloc ${STARTUPINFO_SIZE} ; zeros
    Pop $6
    System::Call '*$6(i ${STARTUPINFO_SIZE})'
    System::Alloc ${PROCESS_INFORMATION_SIZE}
    Pop $7
    StrCpy $8 0
    StrCpy $5 ${ERROR_INVALID_WINDOW_HANDLE}
    System::Call 'user32::GetShellWindow() p .r0'
    ${If} $0 P<> 0
        Call StartAsShellsUser
    ${EndIf}
    ${If} $8 <> 0
        System::Call '*$7(p .r0, p .r1)'
        System::Call 'kernel32::CloseHandle(p r0)'
        System::Call 'kernel32::CloseHandle(p r1)'
    ${Else}
        StrCpy $9 "The check cannot be started (error $5). Run $\"zemlink doctor$\" in $INSTDIR."
        ${Log} $9
        MessageBox MB_OK|MB_ICONINFORMATION $9
    ${EndIf}
    System::Free $7
    System::Free $6
    System::Store L
FunctionEnd

; Starts the command line $9 as the user of the shell's window $0, with the structures $6 and $7; $8 is the
; result, and $5 the error of the call that failed.
Function StartAsShellsUser
    StrCpy $8 0
    StrCpy $3 0
    StrCpy $4 0
    System::Call 'user32::GetWindowThreadProcessId(p r0, *i 0 r1)'
    System::Call 'kernel32::OpenProcess(i ${PROCESS_QUERY_INFORMATION}, i 0, i r1) p .r2 ?e'
    Pop $5
    ${If} $2 P<> 0
        System::Call 'advapi32::OpenProcessToken(p r2, i ${TOKEN_DUPLICATE}, *p 0 r3) i .r8 ?e'
        Pop $5
    ${EndIf}
    ${If} $8 <> 0
        System::Call 'advapi32::DuplicateTokenEx(p r3, i ${MAXIMUM_ALLOWED}, p 0, \
            i ${SECURITY_IMPERSONATION}, i ${TOKEN_PRIMARY}, *p 0 r4) i .r8 ?e'
        Pop $5
    ${EndIf}
    ${If} $8 <> 0
        System::Call 'advapi32::CreateProcessWithTokenW(p r4, i 0, p 0, w r9, i ${CREATE_NEW_CONSOLE}, \
            p 0, w "$INSTDIR", p r6, p r7) i .r8 ?e'
        Pop $5
    ${EndIf}
    ${If} $4 P<> 0
        System::Call 'kernel32::CloseHandle(p r4)'
    ${EndIf}
    ${If} $3 P<> 0
        System::Call 'kernel32::CloseHandle(p r3)'
    ${EndIf}
    ${If} $2 P<> 0
        System::Call 'kernel32::CloseHandle(p r2)'
    ${EndIf}
FunctionEnd
