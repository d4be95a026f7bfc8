# Starts qtbhost as a shell does and looks at what becomes of its output. Arguments: the program, the folder of the
# sources.
program=$1
as1=$2/examples/as1
folder=$(mktemp -d) || exit 1
trap 'rm -rf "$folder"' EXIT
failures=0

fail() {
    echo "$1" >&2
    failures=$((failures + 1))
}

# A standard output that cannot be written to is a failure, which is said.
expect_failure() {
    "$program" "$@" > /dev/full 2> "$folder/error" < /dev/null
    [ $? -eq 1 ] || fail "qtbhost $*: a full disk is reported as success"
    [ "$(cat "$folder/error")" = "qtbhost: the standard output cannot be written to" ] ||
        fail "qtbhost $*: $(cat "$folder/error")"
}
"$program" store init "$folder/store" > /dev/null || fail "store init"
"$program" store import "$folder/store" "$as1/structure.xml" > /dev/null || fail "store import"
expect_failure --help
expect_failure tree "$as1/structure.xml"
expect_failure tree --json "$as1/structure.xml" "$as1/files.xml"
expect_failure link "$as1/products.xml" "$as1/structure.xml"
expect_failure diff "$as1/products.xml" "$as1/products.xml"
expect_failure dirty "$as1/products.xml"
expect_failure types "$as1/products.xml"
expect_failure boxes "$as1/products.xml"
expect_failure store query "$folder/store"
expect_failure store check "$folder/store"
expect_failure store checkout "$folder/store" nut
expect_failure store init "$folder/other"
echo help > "$folder/script"
expect_failure shell "$folder/script"

# One that was closed likewise, and no file takes its place.
"$program" store export "$folder/store" -o "$folder/answer" >&- 2> /dev/null || fail "-o needs a standard output"
"$program" tree "$as1/structure.xml" >&- 2> /dev/null
[ $? -eq 1 ] || fail "a closed standard output is reported as success"

# A reader that has enough is none.
"$program" tree "$as1/structure.xml" 2> "$folder/error" | head -n 1 > /dev/null
[ -s "$folder/error" ] && fail "a closed pipe: $(cat "$folder/error")"

# Text is UTF-8; the bytes of a file's name are the system's.
odd=$(printf 'a\377')
"$program" store query "$folder/store" "Name=$odd" > /dev/null 2> "$folder/error"
[ $? -eq 2 ] || fail "attributes that are not UTF-8 are taken"
"$program" store checkout "$folder/store" "$odd" > /dev/null 2> "$folder/error"
[ $? -eq 2 ] || fail "a key that is not UTF-8 is taken"
grep -q 'keys a.* is no UTF-8 text' "$folder/error" || fail "a key that is not UTF-8: $(cat "$folder/error")"
"$program" store init "$folder/$odd" > /dev/null || fail "store init with an odd name"
"$program" store export "$folder/$odd" -o "$folder/$odd.xml" || fail "store export with odd names"
"$program" boxes "$as1/products.xml" --png "$folder/$odd.png" > /dev/null || fail "boxes with an odd name"
[ -f "$folder/$odd" ] && [ -f "$folder/$odd.xml" ] && [ -f "$folder/$odd.png" ] || fail "odd names are changed"

exit $((failures != 0))
