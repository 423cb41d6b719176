# Completion of orbconv for fish. The program takes no argument without an option.
complete -c orbconv -f

complete -c orbconv -s f -l filename -r -F -d 'the log, with its extension'
complete -c orbconv -o rv -l rinexver -x -a '3.05 4.00 4.01' -d 'RINEX version (default 3.05)'
complete -c orbconv -o G -d 'leave out GPS'
complete -c orbconv -o R -d 'leave out GLONASS'
complete -c orbconv -o W -d 'leave out SBAS (never converted)'
complete -c orbconv -o E -d 'leave out Galileo'
complete -c orbconv -o C -d 'leave out BeiDou'
complete -c orbconv -o J -d 'leave out QZSS (never converted)'
complete -c orbconv -o I -d 'leave out NavIC'
complete -c orbconv -o GC -d 'leave out GLONASS CDMA (never converted)'
complete -c orbconv -o DH -x -d 'antenna offset up, metres'
complete -c orbconv -o DE -x -d 'antenna offset east, metres'
complete -c orbconv -o DN -x -d 'antenna offset north, metres'
complete -c orbconv -o AN -x -d 'antenna number, at most 20 characters'
complete -c orbconv -s h -l help -d 'print the help text and end'
complete -c orbconv -s v -l version -d 'print the version and end'
