# The packages as their users have them: unpacked, and nothing else of the project. Meant to be
# sourced by test.sh.

run_packages() {
  local out=$root/build/packages bits
  say "== packages"
  need_native && need_windows && need zip unzip pkg-config || { skip_home packages; return; }
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
  check "the README names the packages of version $version, and no other" readme_names_version
  check "a CMake project finds the Linux package" cmake_consumer
  check "pkg-config finds the Linux package" pkgconfig_consumer
  for bits in 64 32; do check_windows_package "$bits"; done
}

checksums_hold() {
  local named; named=$(cd "$windows_package" && wc -l <SHA256SUMS)
  (cd "$windows_package" && sha256sum --quiet -c SHA256SUMS) &&
    [ "$named" = "$(find "$windows_package" -type f ! -name SHA256SUMS | wc -l)" ]
}

readme_names_version() {
  [ "$(grep -o 'quendal-classic-asp-[0-9][0-9.]*[0-9]' "$root/README.md" | sort -u)" = \
    "quendal-classic-asp-$version" ]
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
    check "registration for the machine, $folder" registration "$bits"
    check "registration for the user, $folder" registration "$bits" /user
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
    awk '/^\[/ { classes = /\\Software\\(Wow6432Node\\)?Classes/ } classes || /QUENDAL|Quendal/' >"$unpacked/$2"
}
