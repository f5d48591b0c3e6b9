#!/usr/bin/awk -f
# Writes CHANGELOG.md as the changelog of a Debian package; the variable contact is who made it.
function end_entry(    stamp)
{
    if (date == "")
        return
    ("date --utc --rfc-email --date=" date) | getline stamp
    print "\n -- " contact "  " stamp "\n"
}

/^## / {
    end_entry()
    date = $3
    print "tarvex (" substr($2, 1, length($2) - 1) ") stable; urgency=medium\n"
    next
}
date != "" && sub(/^- /, "  * ") { print }
date != "" && sub(/^  [^ *]/, "  &") { print }
END { end_entry() }
