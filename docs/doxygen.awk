# Between the documents and Doxygen (FILTER_PATTERNS in Doxyfile): anchors of headings as those who show Markdown
# elsewhere make them, and links to what is not among the pages as plain text.

function anchor(heading) {
    heading = tolower(heading)
    gsub(/[^a-z0-9 _-]/, "", heading)
    gsub(/ /, "-", heading)
    return heading (seen[heading]++ ? "-" seen[heading] - 1 : "")
}

BEGIN {
    document = FILENAME
    if (document == "")
        document = ARGV[1]
    sub(/.*\//, "", document)
    sub(/\.md$/, "", document)
}

/^```/ { inside = !inside }

!inside {
    if (match($0, /^##+ /))
        $0 = $0 " {#" document "-" anchor(substr($0, RLENGTH + 1)) "}"
    # An anchor is unique among all pages.
    $0 = gensub(/\]\(#([^)]*)\)/, "](#" document "-\\1)", "g")
    $0 = gensub(/\]\((docs\/)?([a-z-]+)\.md#([^)]*)\)/, "](#\\2-\\3)", "g")
    $0 = gensub(/\[([^]]+)\]\(((\.\.\/)?(examples|scripts|tests|bench|LICENSE)[^)]*)\)/, "\\1", "g")
    $0 = gensub(/\[([^]]+)\]\(([a-z]+\.schema\.json)\)/, "<a href=\"\\2\">\\1</a>", "g")
    gsub(/\]\(docs\/images\//, "](")
}

{ print }
