# Completion of orbconv, orbconv-inspect and orbconv-standard for PowerShell (5.1 and later). Load it from your
# profile:
#
#     . 'C:\path\to\orbconv.ps1'

$orbconvNames = @('orbconv', 'orbconv-inspect', 'orbconv-standard')
$orbconvNames += @($orbconvNames | ForEach-Object { "$_.exe" })

Register-ArgumentCompleter -Native -CommandName $orbconvNames -ScriptBlock {
    param($wordToComplete, $commandAst, $cursorPosition)

    $options = @{
        'orbconv' = [ordered]@{
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
        'orbconv-inspect' = [ordered]@{
            '--json'     = 'print one JSON document'
            '--html'     = 'write a page with pictures'
            '-q'         = 'print nothing on standard output but JSON'
            '--quiet'    = 'print nothing on standard output but JSON'
            '-h'         = 'print the help text and end'
            '--help'     = 'print the help text and end'
            '--version'  = 'print the version and end'
        }
        'orbconv-standard' = [ordered]@{
            '--rinex'            = 'version of the files (default 3.05)'
            '--output-dir'       = 'where the files go'
            '--station'          = 'the nine characters that open the names: XXXXMRCCC'
            '--force'            = 'overwrite files'
            '-q'                 = 'nothing but errors on the error stream'
            '--quiet'            = 'nothing but errors on the error stream'
            '--split'            = 'cut the files on whole hours or days'
            '--gzip'             = 'compress the files'
            '--stdout'           = 'that one file to standard output, none on disk'
            '--long-names'       = 'long names (default), or ssssdddf.yyo'
            '--systems'          = 'constellations: letters of GRECI'
            '--start'            = 'first time of the observations, as 2024-05-06T23:00:30'
            '--end'              = 'last time of the observations'
            '--interval'         = 'epochs on whole multiples of so many seconds since midnight'
            '--date'             = 'date of the first epoch, for a log that tells none'
            '--marker-name'      = 'name of the marker'
            '--marker-number'    = 'number of the marker (DOMES)'
            '--marker-type'      = 'GEODETIC, GROUND_CRAFT ...'
            '--observer'         = 'who observed'
            '--agency'           = 'for whom'
            '--receiver-number'  = 'serial number of the receiver'
            '--receiver-type'    = 'type of the receiver'
            '--receiver-version' = 'firmware of the receiver'
            '--antenna-number'   = 'serial number of the antenna'
            '--antenna-type'     = 'type of the antenna, radome in columns 17-20'
            '--antenna-delta'    = 'height over the marker, east, north: H,E,N in metres'
            '--position'         = 'geocentric position of the marker: X,Y,Z in metres'
            '--comment'          = 'a line of comment; can be given several times'
            '-h'                 = 'print the help text and end'
            '--help'             = 'print the help text and end'
            '-v'                 = 'print the version and end'
            '--version'          = 'print the version and end'
        }
    }
    # What can stand behind an option; an option that stands in neither list is a flag.
    $versions = [ordered]@{ '3.05' = 'RINEX 3.05 (default)'; '4.00' = 'RINEX 4.00'; '4.01' = 'RINEX 4.01' }
    $values = @{
        '-rv'          = $versions
        '--rinexver'   = $versions
        '--rinex'      = [ordered]@{ '3.05' = 'RINEX 3.05 (default)'; '4.01' = 'RINEX 4.01' }
        '--split'      = [ordered]@{ '1h' = 'whole hours'; '1d' = 'whole days' }
        '--stdout'     = [ordered]@{ 'obs' = 'the observation file'; 'nav' = 'the navigation file' }
        '--long-names' = [ordered]@{ 'yes' = 'XXXXMRCCC_R_... (default)'; 'no' = 'ssssdddf.yyo' }
    }
    $ownValues = @('-f', '--filename', '-DH', '-DE', '-DN', '-AN', '--html', '--output-dir', '--station', '--systems',
        '--start', '--end', '--interval', '--date', '--marker-name', '--marker-number', '--marker-type', '--observer',
        '--agency', '--receiver-number', '--receiver-type', '--receiver-version', '--antenna-number',
        '--antenna-type', '--antenna-delta', '--position', '--comment')

    $program = [System.IO.Path]::GetFileNameWithoutExtension($commandAst.GetCommandName())
    $known = $options[$program]

    # The option whose value may stand at the cursor: the last word that is complete, or what is ahead of a sign of
    # equality.
    $before = @($commandAst.CommandElements |
            Where-Object { $_.Extent.EndOffset -lt $cursorPosition } |
            ForEach-Object { $_.Extent.Text })
    $option = if ($before.Count -gt 0) { $before[-1] } else { '' }
    $ahead = ''
    if ($wordToComplete -cmatch '^(--[a-z-]+)=') {
        $option = $Matches[1]
        $ahead = $Matches[0]
    }
    $begun = $wordToComplete.Substring($ahead.Length)

    if (@($values.Keys) -ccontains $option) {
        $known = $values[$option]
    } elseif ($ownValues -ccontains $option) {
        return # nothing from here: PowerShell then completes file names by itself
    } elseif ($program -ne 'orbconv' -and -not $begun.StartsWith('-')) {
        return # a log, which the companions take without an option
    }

    foreach ($candidate in $known.GetEnumerator()) {
        if ($candidate.Key.StartsWith($begun, [StringComparison]::Ordinal)) {
            [System.Management.Automation.CompletionResult]::new(
                "$ahead$($candidate.Key)", $candidate.Key, 'ParameterValue', $candidate.Value)
        }
    }
}
