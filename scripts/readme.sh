#!/usr/bin/env bash
# The log in README.md comes from a real run: scripts/readme.sh puts it there, scripts/readme.sh
# --check compares, whatever the time and the machine. Either runs scripts/demo.sh.
. "$(dirname "$0")/lib.sh"

# The entries below the banner of a new file; long ones are cut as README shows them.
entries() { sed -n '/START OF RUN/,$p' | sed -E 's/^(.{104}).{2,}$/\1…/; s/ +$//'; }
shown() { sed -n '/^```$/,/^```$/{/^```$/!p}' "$root/README.md" | sed -n '/START OF RUN/,$p'; }
# Without date, time, machine, user and process.
anywhere() { sed -E 's/^[0-9]+ [A-Z][a-z]+ [0-9]+ [0-9:.]+ [^ ]+ [^ ]+ [0-9]+ /STAMP /; s/….*$//' | cut -c 1-84; }

log=$(mktemp)
trap 'rm -f "$log"' EXIT
"$root/scripts/demo.sh" windows | sed -n '/^--- the log/,$p' | sed 1d | entries >"$log"
case ${1:-} in
  "")
    awk -v log_file="$log" '
      /^```$/ && !done { print; getline line; if (line ~ /START OF RUN/) { while ((getline entry < log_file) > 0) print entry
          while (line !~ /^```$/) getline line; done = 1 } print line; next }
      { print }' "$root/README.md" >"$log.new" && mv "$log.new" "$root/README.md" ;;
  --check) diff -u <(shown | anywhere) <(anywhere <"$log") >&2 ;;
  *) say "usage: $0 [--check]"; exit 2 ;;
esac
