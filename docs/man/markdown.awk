# The sections of a Markdown text from the heading `from` to the heading `to` (without it), for a manual page (man(7)).

function escaped(text) {
    gsub(/\\/, "\\e", text)
    gsub(/-/, "\\-", text)
    gsub(/…/, "\\\\\\&...", text)
    return text
}

# Code and bold print are bold; of a link, its text is left.
function inlined(text,    parts, count, i, out) {
    count = split(text, parts, "`")
    for (i = 1; i <= count; ++i) {
        if (i % 2 == 0) {
            out = out "\\fB" escaped(parts[i]) "\\fR"
            continue
        }
        while (match(parts[i], /\[[^]]*\]\([^)]*\)/)) {
            parts[i] = substr(parts[i], 1, RSTART - 1) linked(substr(parts[i], RSTART, RLENGTH)) \
                substr(parts[i], RSTART + RLENGTH)
        }
        parts[i] = escaped(parts[i])
        while (sub(/\*\*/, "\\fB", parts[i])) sub(/\*\*/, "\\fR", parts[i])
        out = out parts[i]
    }
    return out ~ /^[.']/ ? "\\&" out : out
}

function linked(link) {
    return substr(link, 2, index(link, "]") - 2)
}

function flush() {
    if (paragraph != "") print inlined(paragraph)
    paragraph = ""
}

function begin(macro, text) {
    flush()
    print macro
    paragraph = text
}

/^## / {
    flush()
    isInside = substr($0, 4) == from || (isInside && substr($0, 4) != to)
    if (isInside) print ".SH " toupper(substr($0, 4))
    isHeaded = 1
    next
}
!isInside { next }
/^```/ {
    flush()
    isCode = !isCode
    print isCode ? ".PP\n.EX" : ".EE"
    next
}
isCode { text = escaped($0); print text ~ /^[.']/ ? "\\&" text : text; next }
/^### / { flush(); print ".SS " substr($0, 5); isHeaded = 1; next }
/^$/ { flush(); isBroken = !isHeaded; next }
/^\|[-|]*$/ { row = 1; next }
/^\|/ {
    if ($0 !~ /^\|/ || !row) next
    split(substr($0, 3, length($0) - 4), cells, / \| /)
    begin(".TP", cells[1])
    flush()
    paragraph = cells[2]
    next
}
/^- / { begin(".IP \\(bu 2", substr($0, 3)); isBroken = 0; next }
{
    row = 0
    line = $0
    sub(/^ +/, "", line)
    if (paragraph == "" && isBroken) print ".PP"
    isBroken = isHeaded = 0
    paragraph = paragraph == "" ? line : paragraph " " line
}
END { flush() }
