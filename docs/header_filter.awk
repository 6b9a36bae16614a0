# What doxygen reads of a header: the plain comment at its head becomes documentation of the file, and
# code in a comment gets the empty line before it without which it would be read as text, and backslashes
# in text are no commands.
!past_head && /^\/\// {
    if (!begun) {
        print "/// \\file"
        begun = 1
    }
    sub(/^\/\//, "///")
    print
    next
}
begun || !/^(#pragma once)?$/ { past_head = 1 }
{
    is_code = /^ *\/\/\/     /
    if (is_code && !was_code && was_text) {
        print "///"
    }
    was_code = is_code
    if (!is_code && /\/\/\/.*\\/) {
        gsub(/[\\"<>]/, "\\\\&")
    }
    was_text = /^ *\/\/\/ *[^ ]/
    print
}
