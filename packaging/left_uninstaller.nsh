; An uninstaller that was run in its folder cannot delete itself. It is recognised by its version
; information, whatever its version and host.

; ReadVersionText INFORMATION NAME RESULT
!macro ReadVersionText INFORMATION NAME RESULT
    StrCpy ${RESULT} ""
    System::Call 'version::VerQueryValueW(p ${INFORMATION}, w "\StringFileInfo\040904B0\${NAME}", *p .R1, *i .R2) i .R3'
    ${If} $R3 <> 0
        System::Call 'kernel32::lstrcpynW(w .R4, p R1, i ${NSIS_MAX_STRLEN})'
        StrCpy ${RESULT} $R4
    ${EndIf}
!macroend

; Pops a path; pushes whether it is an uninstaller of this add-in, as 1 or 0.
Function IsOwnUninstaller
    System::Store S
    Pop $0
    StrCpy $9 0
    System::Call 'version::GetFileVersionInfoSizeW(w r0, p 0) i .r1'
    ${If} $1 > 0
        System::Alloc $1
        Pop $2
        System::Call 'version::GetFileVersionInfoW(w r0, i 0, i r1, p r2) i .r3'
        ${If} $3 <> 0
            !insertmacro ReadVersionText r2 "CompanyName" $4
            !insertmacro ReadVersionText r2 "FileDescription" $5
            StrLen $6 "${DESCRIPTION_START}"
            StrCpy $5 $5 $6
            ${If} $4 == "${COMPANY}"
            ${AndIf} $5 == "${DESCRIPTION_START}"
                StrCpy $9 1
            ${EndIf}
        ${EndIf}
        System::Free $2
    ${EndIf}
    Push $9
    System::Store L
FunctionEnd
