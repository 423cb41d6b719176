# Completion of orbconv-inspect for fish. What is no option is a log.
complete -c orbconv-inspect -l json -d 'print one JSON document'
complete -c orbconv-inspect -l html -r -F -d 'write a page with pictures'
complete -c orbconv-inspect -s q -l quiet -d 'print nothing on standard output but JSON'
complete -c orbconv-inspect -s h -l help -d 'print the help text and end'
complete -c orbconv-inspect -l version -d 'print the version and end'
