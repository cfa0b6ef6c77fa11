#!/usr/bin/env bash
# The log in README.md comes from a real run: scripts/readme.sh puts it there, scripts/readme.sh
# --check compares, whatever the time and the machine. Either runs scripts/demo.sh.
. "$(dirname "$0")/lib.sh"

# The entries below the banner of a new file. Long ones are cut, and the machine has a server's names.
entries() {
  sed -n '/START OF RUN/,$p' |
    sed -E "s/ $(hostname | tr a-z A-Z | cut -c 1-15) $(id -un) / WEB1 IUSR /; s/^(.{130}).{2,}$/\1…/; s/ +$//"
}
shown() { sed -n '/START OF RUN/,/^```$/{/^```$/!p}' "$root/README.md"; }
# Without date, time, machine, user and process.
anywhere() { sed -E 's/^[0-9]+ [A-Z][a-z]+ [0-9]+ [0-9:.]+ [^ ]+ [^ ]+ [0-9]+ /STAMP /; s/….*$//' | cut -c 1-80; }

log=$(mktemp)
trap 'rm -f "$log"' EXIT
"$root/scripts/demo.sh" windows | sed -n '/^--- the log/,$p' | sed 1d | entries >"$log"
case ${1:-} in
  "")
    first=$(grep -n 'START OF RUN' "$root/README.md" | head -n 1 | cut -d: -f1)
    last=$((first + $(shown | wc -l) - 1))
    sed -i -e "${last}r $log" -e "$first,${last}d" "$root/README.md" ;;
  --check) diff -u <(shown | anywhere) <(anywhere <"$log") >&2 ;;
  *) say "usage: $0 [--check]"; exit 2 ;;
esac
