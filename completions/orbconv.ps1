# Completion of orbconv for PowerShell (5.1 and later). Load it from your profile:
#
#     . 'C:\path\to\orbconv.ps1'

Register-ArgumentCompleter -Native -CommandName @('orbconv', 'orbconv.exe') -ScriptBlock {
    param($wordToComplete, $commandAst, $cursorPosition)

    # The option whose value may stand at the cursor: the last word that is complete.
    $before = @($commandAst.CommandElements |
            Where-Object { $_.Extent.EndOffset -lt $cursorPosition } |
            ForEach-Object { $_.Extent.Text })
    $option = if ($before.Count -gt 0) { $before[-1] } else { '' }

    if (@('-f', '--filename') -ccontains $option) {
        return # nothing from here: PowerShell then completes file names by itself
    }
    if (@('-DH', '-DE', '-DN', '-AN') -ccontains $option) {
        return
    }

    if (@('-rv', '--rinexver') -ccontains $option) {
        $candidates = [ordered]@{
            '3.05' = 'RINEX 3.05 (default)'
            '4.00' = 'RINEX 4.00'
            '4.01' = 'RINEX 4.01'
        }
    } else {
        $candidates = [ordered]@{
            '-f'         = 'the log, with its extension'
            '--filename' = 'the log, with its extension'
            '-rv'        = 'RINEX version (default 3.05)'
            '--rinexver' = 'RINEX version (default 3.05)'
            '-G'         = 'leave out GPS'
            '-R'         = 'leave out GLONASS'
            '-W'         = 'leave out SBAS (never converted)'
            '-E'         = 'leave out Galileo'
            '-C'         = 'leave out BeiDou'
            '-J'         = 'leave out QZSS (never converted)'
            '-I'         = 'leave out NavIC'
            '-GC'        = 'leave out GLONASS CDMA (never converted)'
            '-DH'        = 'antenna offset up, metres'
            '-DE'        = 'antenna offset east, metres'
            '-DN'        = 'antenna offset north, metres'
            '-AN'        = 'antenna number, at most 20 characters'
            '-h'         = 'print the help text and end'
            '--help'     = 'print the help text and end'
            '-v'         = 'print the version and end'
            '--version'  = 'print the version and end'
        }
    }

    foreach ($candidate in $candidates.GetEnumerator()) {
        if ($candidate.Key.StartsWith($wordToComplete, [StringComparison]::Ordinal)) {
            [System.Management.Automation.CompletionResult]::new(
                $candidate.Key, $candidate.Key, 'ParameterValue', $candidate.Value)
        }
    }
}
