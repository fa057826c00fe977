# A header as Doxygen understands it: what stands above the namespace is said of the file, and a friend of the global
# namespace is no member.

/^\/\/\// { comment = comment $0 "\n"; next }
/^ *friend .*\(::/ { isFriend = 1 }
isFriend {
    if (/;/) isFriend = 0
    $0 = ""
}
{
    if (comment != "" && /^namespace /) printf "/// \\file\n"
    printf "%s", comment
    comment = ""
    print
}
END { printf "%s", comment }
