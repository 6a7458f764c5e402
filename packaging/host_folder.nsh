; Mastercam's folder: what the page offers, and whether it has a host.

; The folder of the first running host with a folder of command hooks, otherwise of the first one. Only the
; page shows it: a silent run does not guess.
Function OfferRunningHost
    StrCpy $2 0
    Call FindHosts
    Pop $0
    ${While} $0 > 0 ; the last one first
        IntOp $0 $0 - 1
        Call FindProgramPath
        Pop $1
        ${GetParent} $1 $1
        ${If} ${FileExists} "$1\${HOOKS}\*.*"
            StrCpy $2 1
            StrCpy $HostFolder $1
        ${ElseIf} $2 = 0
            StrCpy $HostFolder $1
        ${EndIf}
    ${EndWhile}
FunctionEnd

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
