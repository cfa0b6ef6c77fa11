#!/usr/bin/env bash
# Opens every page of the example site in a browser and checks what it shows.
#   scripts/screenshots.sh           also keeps a picture of each page in docs/images
#   scripts/screenshots.sh --check   only checks
. "$(dirname "$0")/lib.sh"
case ${1:-} in
  "") keep=1 ;;
  --check) keep=0 ;;
  *) say "usage: $0 [--check]"; exit 2 ;;
esac
out=$root/build/win64
failed=0

fail() { say "FAILED: $*"; failed=$((failed + 1)); }

# Where the site and the library would be on a server.
drive=$out/wine/drive_c
site='inetpub\wwwroot' library='Program Files\Quendal\QUENDAL_CLASSIC_ASP.DLL'
stage_site() {
  local folder=$drive/${site//\\//} file=$drive/${library//\\//}
  rm -rf "$folder"
  mkdir -p "$folder" "${file%/*}"
  cp -r "$root/examples/site/." "$folder"
  rm -rf "$folder/LOGS"
  cp "$out/QUENDAL_CLASSIC_ASP.DLL" "$file"
  wine_stage 64 "$out/tools/asp_host/asp_host.exe"
  wine_run 64 regsvr32 /s "C:\\$library"
}

# browse OPTION...: the browser, without a window.
browse() {
  local sandbox=()
  [ "$(id -u)" != 0 ] || sandbox=(--no-sandbox)
  timeout --kill-after=5 90 chromium --headless "${sandbox[@]}" --disable-gpu --hide-scrollbars \
    --disable-dev-shm-usage --no-first-run \
    --user-data-dir="$out/browser" --user-agent='Mozilla/5.0 (example)' "$@" 2>"$out/browser.log"
}

address() { echo "http://127.0.0.1:$host_port/$1"; }
fetch() { curl -sS --max-time 60 "$@"; }

# check_page NAME QUERY HEIGHT TEXT...: the page answers 200, comes to its end, and has the texts.
check_page() {
  local name=$1 query=$2 height=$3 url document status text; shift 3
  url=$(address "$name.asp$query")
  document=$out/$name.html
  status=$(fetch -o /dev/null -w '%{http_code}' "$url") || true
  [ "$status" = 200 ] || fail "$name: status $status"
  browse --dump-dom "$url" >"$document" || fail "$name: the browser did not answer"
  for text in "$@" '<footer class="site">'; do
    grep -qF -- "$text" "$document" || fail "$name: the text \"$text\" is missing"
  done
  ! grep -iE "error '?800a|internal server error" "$document" >&2 || fail "$name: an error shows"
  [ "$keep" = 0 ] || keep_picture "$name" "$height" "$url"
}

keep_picture() {
  local name=$1 height=$2 url=$3 picture=$out/$1.png
  rm -f "$picture"
  if ! browse --window-size="1280,$height" --screenshot="$picture" "$url" >/dev/null ||
      ! pngquant --force --strip --quality 60-95 --output "$root/docs/images/$name.png" "$picture"; then
    fail "$name: there is no picture"
  fi
}

# Every address that a page links to answers.
check_links() {
  local link links
  links=$(grep -ohE '(href|src)="[^"#][^"]*"' "$out"/{default,json,strings,arrays,jscript,diagnostics,log}.html |
    cut -d'"' -f2 | grep -v '^data:' | cut -d'#' -f1 | sort -u)
  for link in $links; do
    [ "$(fetch -o /dev/null -w '%{http_code}' "$(address "$link")")" = 200 ] || fail "the link $link"
  done
}

# answers TEXT CURL_ARGUMENT...: what visitors send shows as they sent it, and never as markup.
answers() {
  local text=$1; shift
  fetch "$@" >"$out/answer.html" || fail "no answer: $*"
  grep -qF -- "$text" "$out/answer.html" || fail "the answer to \"$*\" lacks \"$text\""
  ! grep -qF '<script' "$out/answer.html" || fail "the answer to \"$*\" has a script"
}

check_forms() {
  local json; json=$(address json.asp)
  answers '&quot;名&quot;:&quot;\\\&quot;&lt;script&gt;&quot;' \
    --data-urlencode 'json={"名": "\\\"<script>"}' "$json"
  answers '8732: Expecting , delimiter' --data-urlencode 'json=[1, 2' "$json"
  answers 'Title ............................. &lt;script&gt;é 😀' -G \
    --data-urlencode 'title=<script>é 😀' "$(address default.asp)"
  answers "Tom''s &lt;script&gt;" -G --data-urlencode "text=Tom's <script>" "$(address strings.asp)"
}

# The reader of logs shows what is in them to the server itself, and reads nothing else.
check_log() {
  local log archive=LOG.TXT_15_NOV_2026.TXT logs=$drive/${site//\\//}/LOGS
  log=$(address log.asp)
  answers 'Title ............................. &lt;script&gt;é 😀' "$log"
  answers 'The <mark>prices</mark> cannot be read' -G --data-urlencode 'text=Prices' "$log"
  cp "$logs/LOG.TXT" "$logs/$archive"
  answers "<option value=\"$archive\" selected>" -G --data-urlencode "file=$archive" "$log"
  answers '<option value="LOG.TXT" selected>' -G --data-urlencode 'file=..\default.asp' "$log"
  answers 'No run here is like that' -G --data-urlencode 'text=<script>alert' "$log"
  wine_run 64 asp_host.exe run "C:\\$site\\log.asp" --headers --server-variable REMOTE_ADDR=10.1.2.3 \
    >"$out/answer.html"
  grep -qF 'Status: 403' "$out/answer.html" && ! grep -qF 'RUN ***' "$out/answer.html" ||
    fail "the log shows to another machine"
  [ "$(fetch -o /dev/null -w '%{http_code}' -H 'X-Forwarded-For: 10.1.2.3' "$log")" = 403 ] ||
    fail "the log shows through a proxy"
}

need_windows && need chromium curl pngquant fonts-inter fonts-jetbrains-mono \
  fonts-noto-color-emoji fonts-ipafont-gothic
build win64 asp_host QUENDAL_CLASSIC_ASP
trap 'wine_stop 64' EXIT
wine_start 64
stage_site
host_start 64 "C:\\$site" "$out/screenshots"
[ "$keep" = 0 ] || mkdir -p "$root/docs/images"

check_page default '?title=Umsatz%20in%20%E2%82%AC%20%C2%B7%20%E5%A3%B2%E4%B8%8A' 1150 \
  'Title ............................. Umsatz in € · 売上' '*** START OF RUN ***' 'MONTHLY REPORT' \
  '*** Microsoft Error Code    *** = 53' '*** END OF RUN ***' '<span class="keyword">Dim</span>'
check_page json '' 1306 'Jürgen Groß' '東京' 'Tea, Sencha 🍵' '"paid":true,"total":104.5}' \
  '8732: Expecting property name' 'こんにちは'
check_page strings '' 1240 'Thursday, 5 November 2026' 'caf&amp;#233;' 'twenty million' \
  '1729 characters'
check_page arrays '' 1100 '<code>Weekend</code>' '<code>-1</code>' '<code>40</code> <code>12</code>'
check_page jscript '' 1375 '5 November 2026' 'Ship to ........................... 東京' \
  '*** ERROR *** No JSON: Expecting property name'
check_page diagnostics '' 1335 '<td>C:\<wbr>inetpub\<wbr>wwwroot\<wbr>LOGS\' 'Platform Information' \
  '<th scope="row">QUENDAL_CLASSIC_ASP.DLL</th>' '<td>C:\<wbr>windows\<wbr>system32\'
check_page log '?errors=1&text=prices' 1290 '<strong>5 error lines</strong>' '<li class="error">' \
  '*** ERROR *** The <mark>prices</mark> cannot be read'
check_links
check_forms
check_log
host_stop 64 || fail "the page host ended"
[ ! -s "$out/screenshots.errors" ] || { cat "$out/screenshots.errors" >&2; fail "a page failed"; }

[ "$failed" = 0 ] || { say "$failed checks failed"; exit 1; }
say "every page of the site is as it should be"
