# Brings the columns of orbconv's files to those of the RINEX tables. Values are moved, never changed.
#
#   awk -f standard-columns.awk site0650.26o site0650.26o >site0650.obs     name the file twice
#   awk -f standard-columns.awk site0650.26G site0650.26G >site0650.nav
#
# The second name must be that of the first. A file that this script has made, which a COMMENT in its header
# tells, is refused: its columns would be moved onto other codes. Exit status 2 for both, and nothing is written.
# It is a slow way for a long file: half a minute for a file of some 400 MB.
#
# In an observation file: a signal that no satellite of a constellation has in the whole file loses its
# columns; "SYS / # / OBS TYPES" then names exactly the columns that are there, also for BeiDou; blanks at
# the ends of lines go. In a navigation file: "TIME SYSTEM CORR" gets its standard columns, and the first
# line of a mixed file reads "M: MIXED". In both, labels move to column 61. What no column can tell (clocks,
# dates, biases, the second range) stays as it is: see the manual.

BEGIN {
    # The signals of each constellation in the order of their columns, 64 to a signal.
    signals["G"] = "1C 1W 2W 2X 5X 1X"
    signals["R"] = "1C 1P 2C 2P 3X"
    signals["E"] = "1X 8X 7X 6X 5X"
    signals["C"] = "2I 8X 7I 6I 5X 1X"
    labels["RINEX VERSION / TYPE"]; labels["SYS / PHASE SHIFT"]; labels["GLONASS COD/PHS/BIS"]
    labels["TIME SYSTEM CORR"]; labels["IONOSPHERIC CORR"]
    mark = "COLUMNS AS IN THE STANDARD"
}

function refuse(why) {
    refused = 1
    print "standard-columns.awk: " why > "/dev/stderr"
    exit 2
}

{ sub(/\r$/, "") }
FNR == 1 {
    if (!reading++) name = FILENAME
    else if (FILENAME != name) refuse("not one file twice: " name ", " FILENAME)
    inHeader = 1
    observations = index($0, "OBSERVATION DATA") > 0
}
inHeader && index($0, mark) == 1 { refuse(name " is a file that this script has made") }

function isSatellite() { return observations && !inHeader && match($0, /^[GREC]-?[0-9]+/) }
function slot(s) { return substr($0, idLength + 1 + 64 * s, 64) }
function trimmed(text) { sub(/ +$/, "", text); return text }
function put(text, label) { printf "%-60s%s\n", trimmed(text), label }

# The first reading finds out which signals there are.
reading == 1 {
    if (isSatellite()) {
        idLength = RLENGTH
        system1 = substr($0, 1, 1)
        for (s = 0; s < 6; s++) if (slot(s) ~ /[^ ]/) used[system1, s] = 1
    }
    if (/END OF HEADER$/) inHeader = 0
    next
}

function putObsTypes(letter,    names, n, s, k, count, codes, line) {
    n = split(signals[letter], names, " ")
    count = 0
    for (s = 0; s < n; s++) if (used[letter, s])
        for (k = 1; k <= 4; k++) codes[++count] = substr("CLDS", k, 1) names[s + 1]
    for (k = 1; k <= count; k++) {
        if (k % 13 == 1) line = k == 1 ? sprintf("%s  %3d", letter, count) : "      "
        line = line " " codes[k]
        if (k % 13 == 0 || k == count) put(line, "SYS / # / OBS TYPES")
    }
}

inHeader && observations && /SYS \/ # \/ OBS TYPES$/ {
    if (/^[GRECI]/) system1 = substr($0, 1, 1)
    if (!typesDone++) for (s = 1; s <= 4; s++) putObsTypes(substr("GREC", s, 1))
    if (system1 == "I") put(substr($0, 1, 58), "SYS / # / OBS TYPES")
    next
}

inHeader && /TIME SYSTEM CORR$/ {
    text = substr($0, 5)
    match(text, /-?[0-9]\.[0-9]+D[-+][0-9]+/); first = substr(text, RSTART, RLENGTH)
    text = substr(text, RSTART + RLENGTH)
    match(text, /-?[0-9]\.[0-9]+D[-+][0-9]+/); second = substr(text, RSTART, RLENGTH)
    split(substr(text, RSTART + RLENGTH), reference, " ")
    put(sprintf("%-4s %17s%16s%7s%5s", substr($0, 1, 4), first, second, reference[1], reference[2]),
        "TIME SYSTEM CORR")
    next
}

inHeader && /MIXED +RINEX VERSION/ { put(substr($0, 1, 40) "M: MIXED", "RINEX VERSION / TYPE"); next }

inHeader && FNR == 1 && observations {
    # A log of one constellation can leave the letter out, and all behind it one column to the left.
    put(substr($0, 1, 40) substr($0, 41, length($0) - 60), "RINEX VERSION / TYPE")
    next
}

inHeader {
    for (label in labels)
        if (length($0) >= length(label) && substr($0, length($0) - length(label) + 1) == label) {
            put(substr($0, 1, length($0) - length(label)), label)
            next
        }
    print
    if (/PGM \/ RUN BY \/ DATE$/) put(mark, "COMMENT")
    if (/END OF HEADER$/) inHeader = 0
    next
}

isSatellite() {
    idLength = RLENGTH
    line = substr($0, 1, idLength)
    for (s = 0; s < 6; s++) if (used[substr($0, 1, 1), s]) line = line sprintf("%-64s", slot(s))
    print trimmed(line)
    next
}

{ print trimmed($0) }

END { if (reading < 2 && !refused) refuse("name the file twice: it is read twice") }
