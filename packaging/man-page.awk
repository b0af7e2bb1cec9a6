# A manual page for the terminal from what a program prints for --help and a page with its prose:
#
#     awk -v version=4.0.0 -f man-page.awk HELP PAGE.in > PAGE
#
# In PAGE.in @VERSION@ stands for the version, a line @OPTIONS@ for the entries of HELP, and a line @STATUS@ for
# its paragraph on the exit status. An entry begins with two blanks and a word; its text stands behind two
# blanks or more, or on the lines below it.

function Escaped(text) {
    gsub(/\\/, "\\e", text)
    gsub(/-/, "\\-", text)
    return text
}

# A line of text must not be taken for a request.
function Line(text) {
    text = Escaped(text)
    return (text ~ /^[.']/ ? "\\&" : "") text "\n"
}

FNR == NR && /^  [^ ]/ {
    entry = substr($0, 3)
    gap = match(entry, /  +/)
    options = options ".TP\n.B " Escaped(gap ? substr(entry, 1, gap - 1) : entry) "\n"
    if (gap) options = options Line(substr(entry, gap + RLENGTH))
    inside = "entry"
    next
}
FNR == NR && /^Exit status: / {
    status = Line(substr($0, 14))
    inside = "status"
    next
}
FNR == NR {
    if ($0 ~ /^ *$/) inside = ""
    sub(/^ +/, "")
    if (inside == "entry") options = options Line($0)
    if (inside == "status") status = status Line($0)
    next
}

$0 == "@OPTIONS@" { printf "%s", options; next }
$0 == "@STATUS@" { printf "%s", status; next }
{
    gsub(/@VERSION@/, version)
    print
}
