# Builds the add-in for a real host with Visual C++ and the host's development kit, and compares the names
# that it exports and imports with the table in docs/real-host.md. Run it in any PowerShell on Windows:
#
#   script\real-host.ps1 -HostName 'Mastercam 26' -Kit '<kit.h>' -Include C:\Kit\include `
#       -Libraries C:\Kit\Mastercam.lib,C:\Kit\MCCore.lib,...
#
# -HostName is the host with its release, for the package's name. -Kit is the kit's umbrella header with its
# brackets or quotes. The library is build\msvc\bin\torvapdm.dll, with its debug information in torvapdm.pdb.
param(
    [Parameter(Mandatory)] [string] $HostName,
    [Parameter(Mandatory)] [string] $Kit,
    [Parameter(Mandatory)] [string[]] $Include,
    [Parameter(Mandatory)] [string[]] $Libraries
)
$ErrorActionPreference = 'Stop'
Set-Location (Join-Path $PSScriptRoot '..')

function Invoke-Checked([string] $program) {
    & $program @args
    if ($LASTEXITCODE -ne 0) { throw "$program failed with exit code $LASTEXITCODE" }
}

# A list for CMake, to which a backslash is no separator.
function Join-Paths([string[]] $paths) { ($paths -join ';').Replace('\', '/') }

# The newest Visual Studio with the framework; its environment replaces the "Native Tools" prompt.
function Enter-VisualStudio {
    $vswhere = Join-Path ${env:ProgramFiles(x86)} 'Microsoft Visual Studio\Installer\vswhere.exe'
    $folder = & $vswhere -latest -products * -requires Microsoft.VisualStudio.Component.VC.ATLMFC `
        -property installationPath
    if (-not $folder) { throw 'Visual Studio with the components C++ MFC and C++ ATL is not installed' }
    Import-Module (Join-Path $folder 'Common7\Tools\Microsoft.VisualStudio.DevShell.dll')
    Enter-VsDevShell -VsInstallPath $folder -SkipAutomaticLocation -DevCmdArguments '-arch=x64' | Out-Null
}

# The lines of the table: "exports" or "imports of DLL", then the indented names of each.
function Get-ListedNames {
    $section = $null
    $inTable = $false
    foreach ($line in Get-Content docs\real-host.md) {
        if ($line -eq '```names') { $inTable = $true }
        elseif ($line -eq '```') { $inTable = $false }
        elseif ($inTable -and $line -match '^(exports|imports of (?<dll>\S+)|other imported DLLs)$') {
            $section = if ($Matches.dll) { $Matches.dll } else { $Matches[1] }
        }
        elseif ($inTable -and $section -ne 'other imported DLLs' -and $line -match '^  (\S+)$') {
            "$section $($Matches[1])"
        }
    }
}

function Get-BuiltNames([string] $library, [string[]] $hostLibraries) {
    foreach ($line in dumpbin /nologo /exports $library) {
        if ($line -match '^\s+\d+\s+[0-9A-F]+\s+[0-9A-F]{8}\s+(\S+)') { "exports $($Matches[1])" }
    }
    $dll = $null
    foreach ($line in dumpbin /nologo /imports $library) {
        if ($line -match '^\s{4}(\S+\.dll)$') { $dll = $Matches[1] }
        elseif ($dll -in $hostLibraries -and $line -match '^\s+[0-9A-F]+ (\S+)$') { "$dll $($Matches[1])" }
    }
}

Enter-VisualStudio
Invoke-Checked cmake --preset msvc "-DTORVAPDM_HOST_NAME=$HostName" "-DTORVAPDM_HOST_DEVELOPMENT_KIT=$Kit" `
    "-DTORVAPDM_HOST_INCLUDE_DIRS=$(Join-Paths $Include)" "-DTORVAPDM_HOST_LIBRARIES=$(Join-Paths $Libraries)"
Invoke-Checked cmake --build --preset msvc

$library = 'build\msvc\bin\torvapdm.dll'
$database = 'build\msvc\bin\torvapdm.pdb'
if (-not (Test-Path $database)) { throw "the build has not made $database" }
$hostLibraries = 'Mastercam.dll', 'MCCore.dll', 'MCMill.dll', 'MCMachineDef.dll'
$difference = Compare-Object @(Get-ListedNames) @(Get-BuiltNames $library $hostLibraries)
if ($difference) {
    $difference | ForEach-Object {
        $where = if ($_.SideIndicator -eq '<=') { 'only in docs/real-host.md' } else { "only in $library" }
        Write-Output "${where}: $($_.InputObject)"
    }
    throw 'the names differ from the table'
}
Write-Output "$library has the names of the table; script/package needs $database next to it"
