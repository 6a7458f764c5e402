# Completion for zemlink in PowerShell. Run this file in the profile: . "C:\Program Files\...\zemlink.ps1"

Register-ArgumentCompleter -Native -CommandName zemlink, zemlink.exe -ScriptBlock {
    param($word, $line, $position)
    $options = [ordered]@{
        'status' = @()
        'open' = @('--until-opened', '--host', '--timeout')
        'new' = @('--host', '--timeout')
        'checkin' = @('--host', '--timeout')
        'listen' = @('--count', '--timeout')
        'decode' = @('--as')
        'watch' = @('--only', '--since', '--count', '--timeout')
        'record' = @('--redact', '--timeout')
        'replay' = @('--host', '--at-once', '--timeout')
        'report' = @('--recording', '--redact')
        'verify' = @('--open', '--new-file', '--check-in', '--junit', '--timeout')
        'doctor' = @('--all')
    }
    $kinds = 'command', 'machine', 'answer', 'commits', 'tools', 'queue', 'notices', 'picture', 'log', 'events', 'bookmark', 'copies', 'settings'
    $given = @($line.CommandElements | Select-Object -Skip 1 |
        Where-Object { $_.Extent.EndOffset -lt $position } | ForEach-Object { $_.ToString() })
    $command = $given | Where-Object { $options.Contains($_) } | Select-Object -First 1
    if ($given.Count -gt 0 -and $given[-1] -eq '--as') {
        $words = $kinds
    } elseif ($command) {
        $words = $options[$command] + @('--json', '--help')
    } else {
        $words = @($options.Keys) + @('--version', '--json', '--help')
    }
    $words | Where-Object { $_ -like "$word*" } |
        ForEach-Object { [System.Management.Automation.CompletionResult]::new($_) }
}
