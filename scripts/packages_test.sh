# The packages as their users have them: unpacked, and nothing else of the project. Meant to be
# sourced by test.sh.

run_packages() {
  local out=$root/build/packages bits
  say "== packages"
  need_native && need_windows && need zip unzip pkg-config wixl msitools curl || { skip_home packages; return; }
  "$root/scripts/package.sh" "$out" >/dev/null || { failed=$((failed + 1)); return; }
  version=$(sed -n 's/^CMAKE_PROJECT_VERSION:STATIC=//p' "$root/build/native/CMakeCache.txt")
  unpacked=$out/unpacked
  rm -rf "$unpacked" && mkdir "$unpacked"
  tar -C "$unpacked" -xf "$out/quendal-classic-asp-$version-linux-x86_64.tar.gz"
  unzip -q -d "$unpacked" "$out/quendal-classic-asp-$version-windows.zip"
  linux_package=$unpacked/quendal-classic-asp-$version-linux-x86_64
  windows_package=$unpacked/quendal-classic-asp-$version-windows
  consumer_source=$linux_package/share/doc/quendal_classic_asp/examples/cmake_consumer

  check "checksums of the Windows package" checksums_hold
  check "links in the repository's documents" links_lead_somewhere
  check "the Windows package's documents name only what is in it" package_documents
  check "the documents name the packages of version $version, and no other" readme_names_version
  check "a CMake project finds the Linux package" cmake_consumer
  check "pkg-config finds the Linux package" pkgconfig_consumer
  # The 64-bit Windows compares the installer's keys with those that the 32-bit one registered.
  for bits in 32 64; do check_windows_package "$bits"; done
}

checksums_hold() {
  local named; named=$(cd "$windows_package" && wc -l <SHA256SUMS)
  (cd "$windows_package" && sha256sum --quiet -c SHA256SUMS) &&
    [ "$named" = "$(find "$windows_package" -type f ! -name SHA256SUMS | wc -l)" ]
}

links_lead_somewhere() {
  (cd "$root" && perl scripts/dead_links.pl . *.md docs/*.md docs/reference/*.md) >&2
}

package_documents() {
  (cd "$windows_package" && perl "$root/scripts/dead_links.pl" --package . *.md docs/*.md) >&2
}

readme_names_version() {
  [ "$(grep -oh 'quendal-classic-asp-[0-9][0-9.]*[0-9]' "$root/README.md" "$root/docs/installing.md" |
    sort -u)" = "quendal-classic-asp-$version" ]
}

consumer_text='{"report":7,"open":[true,null]}'

cmake_consumer() {
  local work=$unpacked/cmake_consumer
  cp -r "$consumer_source" "$work"
  cmake -G Ninja -S "$work" -B "$work/build" -DCMAKE_PREFIX_PATH="$linux_package" >"$work/log" &&
    cmake --build "$work/build" >>"$work/log" &&
    [ "$("$work/build/consumer")" = "$consumer_text" ] || { cat "$work/log" >&2; return 1; }
}

pkgconfig_consumer() {
  local work=$unpacked/pkgconfig_consumer flags
  mkdir "$work"
  export PKG_CONFIG_PATH=$linux_package/lib/pkgconfig
  flags=$(pkg-config --cflags --libs quendal_classic_asp)
  [ "$(pkg-config --modversion quendal_classic_asp)" = "$version" ] &&
    g++ -std=c++20 "$consumer_source/main.cpp" -o "$work/consumer" $flags &&
    [ "$(LD_LIBRARY_PATH=$linux_package/lib "$work/consumer")" = "$consumer_text" ]
}

check_windows_package() {  # check_windows_package BITS, on a Windows that has seen nothing else
  local bits=$1 folder=x64
  [ "$bits" = 64 ] || folder=x86
  build "win$bits" registration_free_client || { failed=$((failed + 1)); return; }
  wine_variant=' & packages'  # a path as people have them
  wine_forget "$bits"
  as_root rm -rf "$(wine_folder "$bits")"
  if windows_up "$bits" "the Windows package, $folder"; then
    wine_stage "$bits" "$windows_package"/*
    check "use without registration, $folder" without_registration "$bits" "$folder"
    # This first run, which cannot succeed, is also the one in which the script host settles in.
    check "no page runs yet, $folder" fails page_runs "$bits"
    # The folder of a user's classes, which the emulation makes only when one is needed.
    wine_run "$bits" reg add 'HKCU\Software\Classes\CLSID' /f >/dev/null || true
    export_registry "$bits" before
    cp "$unpacked/before" "$unpacked/before$bits"
    check "registration for the machine, $folder" registration "$bits"
    check "registration for the user, $folder" registration "$bits" /user
    check "verify.cmd, $folder" verify "$bits" "$folder"
    [ "$bits" = 32 ] || check_installer
    [ "$bits" = 32 ] || check "try.cmd" try_site
    wine_stop "$bits"
  fi
  wine_variant=
}

# The client finds the classes by its manifest, and without that does not.
without_registration() {
  local bits=$1 folder=$2 stage client
  stage=$(wine_folder "$bits") client=$root/build/win$bits/client.exe
  as_root cp "$client" "$stage/$folder/client.exe"
  as_root mkdir -p "$stage/bare"
  as_root cp "$client" "$stage/$folder/QUENDAL_CLASSIC_ASP.DLL" "$stage/bare"
  diff -u - <(wine_run "$bits" "$folder\\client.exe") <<END >&2 || return 1
FUNCTIONS: $consumer_text
LOGGING: CLIENT.TXT
Type library: 22 types
END
  [ "$(wine_run "$bits" 'bare\client.exe')" = "failed: CLSIDFromProgID: 0x800401F3" ]
}

# Registers, runs the page that lies in the package, unregisters; the registry is as before then.
registration() {  # registration BITS [/user]
  local bits=$1 option=${2:-} stage
  stage=$(wine_folder "$bits")
  as_root rm -rf "$stage/LOGS"
  wine_run "$bits" cmd /c register.cmd $option >&2 || return 1
  export_registry "$bits" registered
  [ -n "$option" ] || cp "$unpacked/registered" "$unpacked/registered$bits"
  new_keys=$(diff <(grep '^\[' "$unpacked/before") <(grep '^\[' "$unpacked/registered") | grep '^>')
  grep -q 'QUENDAL_REPORTS_ASP.LOGGING' <<<"$new_keys" || return 1
  # The emulation has type libraries for the machine only.
  if [ -n "$option" ] &&
    grep 'HKEY_LOCAL_MACHINE.*\\\(CLSID\|QUENDAL\)' <<<"$new_keys" >&2; then return 1; fi

  if [ -n "$option" ] && ! sees_user_classes "$bits"; then
    say "not shown: a page; this system does not look at a user's classes"
  else
    page_runs "$bits" || return 1
  fi
  wine_run "$bits" cmd /c unregister.cmd $option >&2 || return 1
  export_registry "$bits" after
  diff "$unpacked/before" "$unpacked/after" >&2
}

sees_user_classes() {
  wine_run "$1" reg query 'HKCR\QUENDAL_REPORTS_ASP.LOGGING' >/dev/null
}

page_runs() {  # page_runs BITS; its log tells the version that the package has
  local bits=$1 work stage
  work=$(wine_path "$bits") stage=$(wine_folder "$bits")
  wine_run "$bits" cscript //nologo "$work\\examples\\page.vbs" "$work" |
    grep '^end of page$' >&2 &&
    iconv -f UTF-16 -t UTF-8 "$stage/LOGS/LOG.TXT" | tr -d '\r' |
    grep "^Quendal Classic ASP Version \.* ${version//./\\.}\$" >&2
}

fails() { ! "$@"; }

# The classes of the machine and of the users, and whatever else names the component. The rest of
# the registry changes by itself while Windows runs.
export_registry() {  # export_registry BITS NAME
  wine_run "$1" regedit /E "$(wine_path "$1")\\$2.reg"
  iconv -f UTF-16 -t UTF-8 "$(wine_folder "$1")/$2.reg" | tr -d '\r' |
    awk '/^\[/ { key = $0; shown = 0; classes = /\\Software\\(Wow6432Node\\)?Classes|QUENDAL/ }
      classes { print; next }
      /QUENDAL|Quendal/ { if (!shown++) print key; print }' >"$unpacked/$2"
}

# verify.cmd says what is the matter, and ends with the status that goes with it.
verify() {  # verify BITS FOLDER
  local bits=$1 folder=$2 dll other=x86 failures=0
  dll=$(wine_folder "$bits")/$folder/QUENDAL_CLASSIC_ASP.DLL
  [ "$folder" = x64 ] || other=x64
  verify_says "$bits" 1 'FAILED: the component is not registered.'
  wine_run "$bits" cmd /c register.cmd >&2
  verify_says "$bits" 0 "$folder: VBScript works" "$folder: JScript works" \
    "What is registered works: $folder"

  as_root mv "$dll" "$dll.kept"
  verify_says "$bits" 1 "$folder: FAILED: the registration is at fault. It names a DLL that is not there"
  as_root cp "$windows_package/$other/QUENDAL_CLASSIC_ASP.DLL" "$dll"
  verify_says "$bits" 1 "$folder: FAILED: the library is at fault. This is no $folder DLL (0x8007000B)"
  fails wine_run "$bits" cmd /c register.cmd | grep -F "$folder: FAILED, regsvr32 status 3" >&2 ||
    failures=$((failures + 1))
  as_root mv "$dll.kept" "$dll"

  as_root sed -i 's/pear/plum/' "$(wine_folder "$bits")/verify/page.vbs.expected"
  verify_says "$bits" 1 "$folder: FAILED: the library is at fault. The VBScript page printed in line 2" \
    "$folder: JScript works"
  as_root cp "$windows_package/verify/page.vbs.expected" "$(wine_folder "$bits")/verify"

  wine_run "$bits" reg delete "$classes\\CLSID\\$functions_class" /f >/dev/null
  verify_says "$bits" 1 "$folder: FAILED: the registration is at fault. One of the two classes is missing."
  wine_run "$bits" reg delete "$classes\\CLSID\\$logging_class" /f >/dev/null
  verify_says "$bits" 1 'FAILED: the registration is at fault. The classes have names, but no DLL'
  wine_run "$bits" cmd /c unregister.cmd >&2
  [ "$failures" = 0 ]
}
classes='HKLM\Software\Classes'
logging_class='{BEB8AD95-C69C-4BA7-8279-2097E458CA71}'
functions_class='{F08C97E1-0CE9-4B97-B3FE-FA5FCAD4B434}'

verify_says() {  # verify_says BITS STATUS WORDS...; counts failures
  local bits=$1 expected=$2 said status=0 words; shift 2
  said=$(wine_run "$bits" cmd /c '.\verify.cmd') || status=$?
  [ "$status" = "$expected" ] || { say "status $status: $said"; failures=$((failures + 1)); }
  for words; do
    grep -qF -- "$words" <<<"$said" || { say "\"$words\" is not in: $said"; failures=$((failures + 1)); }
  done
}

# The installer's package, with others of a higher and a lower version made of the same files.
check_installer() {
  local stage moment=1700000000
  stage=$(wine_folder 64)
  cp "$out/quendal-classic-asp-$version.msi" "$stage/same.msi"
  make_installer "$windows_package" 99.0.0 "$moment" "$stage/newer.msi"
  make_installer "$windows_package" 0.0.1 "$moment" "$stage/older.msi"
  # The system makes these with the first class or product, and leaves or takes them with the last.
  wine_run 64 reg add 'HKLM\Software\Wow6432Node\Classes\CLSID\{0}' /f >/dev/null
  export_registry 64 before
  check "equal files give an equal installer" same_installer "$stage" "$moment"
  check "silent installation" install_package
  check "the installer's keys are those of regsvr32" same_keys
  check "an older version does not replace a newer one" refuses_older
  check "upgrade and removal leave nothing behind" upgrade_and_remove
}

msiexec() { wine_run 64 msiexec "$@" /qn; }
program_files="Quendal Classic ASP"

installed_version() {
  wine_run 64 reg query 'HKLM\Software\Microsoft\Windows\CurrentVersion\Uninstall' /s |
    awk '/DisplayName|DisplayVersion|Publisher/ { print $1, $NF }' | sort | tr '\n' ' '
}

same_installer() {  # same_installer STAGE MOMENT
  TZ=Asia/Tokyo make_installer "$windows_package" 99.0.0 "$2" "$1/again.msi" &&
    cmp "$1/newer.msi" "$1/again.msi" >&2
}

install_package() {
  local said drive=$root/build/win64/wine$wine_variant/drive_c
  msiexec /i same.msi || return 1
  said=$(wine_run 64 cmd /c "C:\\Program Files\\$program_files\\verify.cmd") || { say "$said"; return 1; }
  page_runs 64 && [ -f "$drive/Program Files (x86)/$program_files/QUENDAL_CLASSIC_ASP.DLL" ] &&
    [ "$(installed_version)" = "DisplayName ASP DisplayVersion $version Publisher Reports " ]
}

# The values that a registration brought, one in a line with its key, as either bitness sees them and
# wherever the files are.
new_values() {  # new_values BEFORE AFTER
  diff <(values_of "$unpacked/$1") <(values_of "$unpacked/$2") | sed -n 's/^> //p' |
    sed -E 's/"[^"]*QUENDAL_CLASSIC_ASP.DLL"/"DLL"/; /HELPDIR\]/s/=".*"/="FOLDER"/; s/\\Typelib\\/\\TypeLib\\/; s/Eventlog/EventLog/' |
    sort -u
}
values_of() {
  sed -e ':a; /\\$/{N; s/\\\n *//; ba}' "$1" |
    awk '/^\[/ { key = $0; print key; next } NF { print key, $0 }' | sort -u
}

same_keys() {
  export_registry 64 installed
  new_values before installed | grep -v '\\Installer\|\\Uninstall' >"$unpacked/installed_values"
  diff -u <(new_values before64 registered64 | grep -v Wow6432Node) \
    <(grep -v 'Wow6432Node\|win32\]' "$unpacked/installed_values") >&2 || return 1
  [ -f "$unpacked/registered32" ] || { say "not compared: x86"; return 0; }
  diff -u <(new_values before32 registered32 | grep -v EventLog) \
    <(grep '\\Wow6432Node\\Classes' "$unpacked/installed_values" | grep -v 'win64\]' |
      sed 's/\\Wow6432Node//') >&2
}

refuses_older() {
  fails msiexec /i older.msi && [[ $(installed_version) = *" $version "* ]]
}

upgrade_and_remove() {
  msiexec /i newer.msi && [[ $(installed_version) = *" 99.0.0 "* ]] && page_runs 64 &&
    fails msiexec /i same.msi && msiexec /x newer.msi && [ -z "$(installed_version)" ] || return 1
  export_registry 64 after
  diff "$unpacked/before" <(awk '/^\[/ { ours = !/Classes.Installer/ } ours' "$unpacked/after") >&2 &&
    ! find "$root/build/win64/wine$wine_variant/drive_c" -name "$program_files" | grep . >&2
}

# The example site runs from the package although nothing is registered.
try_site() {
  local port=$((20000 + RANDOM % 20000)) log=$unpacked/try attempt status=1
  wine_seconds=300 in_wine 64 wine cmd /c try.cmd "$port" >"$log" 2>&1 &
  for attempt in $(seq 60); do
    sleep 1
    curl -s --max-time 60 "http://127.0.0.1:$port/default.asp" >"$log.html" || continue
    grep -qF 'START OF RUN' "$log.html" && status=0
    break
  done
  host_stop 64 || status=1
  wait
  [ "$status" = 0 ] || cat "$log" >&2
  return "$status"
}
