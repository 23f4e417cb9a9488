#!/usr/bin/env bash
# Packs a built tree into its Debian package, in a scratch folder, and checks what the
# package holds without installing it: the files, the dependencies the shared-library
# scan found, lintian's verdict (no error, no warning), the desktop entry, the
# software-centre metadata, the changelog, the manual pages (they render, and
# pemlo-cli's names every command and option the command line's help names), and that
# the command line runs from the unpacked tree, report included, without a Qt library
# of its own.
#   tools/check-package.sh BUILD-DIR
set -euo pipefail
build=$(cd "$1" && pwd)
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
failures=0
fail() { echo "check-package: $*" >&2; failures=$((failures + 1)); }

(cd "$build" && cpack -G DEB -B "$scratch" >"$scratch/cpack.log" 2>&1) || { cat "$scratch/cpack.log" >&2; exit 1; }
deb=$(echo "$scratch"/pemlo-cpt_*.deb)
[ -f "$deb" ] || { echo "check-package: no package was made" >&2; exit 1; }
version=$(sed -n 's/^CMAKE_PROJECT_VERSION:STATIC=//p' "$build/CMakeCache.txt")
source_dir=$(sed -n 's/^CMAKE_HOME_DIRECTORY:INTERNAL=//p' "$build/CMakeCache.txt")
homepage=$(sed -n 's/^PEMLO_HOMEPAGE:STRING=//p' "$build/CMakeCache.txt")
metainfo=usr/share/metainfo/invalid.pemlo_cpt.pemlo.metainfo.xml

# The files: the programs, their private helper, the menu entry, icons, the manuals,
# the software-centre metadata, the changelog, copyright, the soil behaviour type's rule
# and the lintian override, and
# nothing else (no test or benchmark slipped into an install rule).
dpkg-deb -c "$deb" | awk '$1 !~ /^d/ {print $6}' | sort >"$scratch/files"
{
  printf './%s\n' usr/bin/pemlo usr/bin/pemlo-cli usr/libexec/pemlo-cpt/pemlo-report \
    usr/share/applications/pemlo-cpt.desktop usr/share/man/man1/pemlo.1.gz usr/share/man/man1/pemlo-cli.1.gz \
    "$metainfo" usr/share/doc/pemlo-cpt/changelog.gz usr/share/doc/pemlo-cpt/copyright \
    usr/share/doc/pemlo-cpt/sbtn.md.gz \
    usr/share/lintian/overrides/pemlo-cpt
  for size in 16 22 24 32 48 64 128 256; do
    echo "./usr/share/icons/hicolor/${size}x${size}/apps/pemlo-cpt.png"
  done
} | sort >"$scratch/expected"
diff -u "$scratch/expected" "$scratch/files" >&2 || fail "the package does not hold exactly the files above"

# The fields, and dependencies found by the scan of the executables' libraries.
[ "$(dpkg-deb -f "$deb" Package)" = pemlo-cpt ] || fail "package name"
[ "$(dpkg-deb -f "$deb" Version)" = "$version" ] || fail "version is not $version"
depends=$(dpkg-deb -f "$deb" Depends)
for library in libc6 libstdc++6 libqt6core6 libqt6gui6 libqt6widgets6 libqt6charts6 libqt6printsupport6; do
  [[ ",$depends," == *", $library "* || ",$depends," == *",$library "* || ",$depends," == *" $library,"* ]] ||
    fail "Depends lacks $library: $depends"
done

# Lintian as a maintainer runs it (the default profile, informational tags shown):
# any error or warning fails, and the static command line is reported as overridden.
# With the overrides shown, lintian counts the overridden error as an error of its
# exit status, so errors are read from its lines (E:, where an overridden one is O:).
lintian --info --display-info --show-overrides --fail-on warning "$deb" >"$scratch/lintian.txt" 2>&1 ||
  fail "lintian: $(grep -E '^W: ' "$scratch/lintian.txt" || tail -5 "$scratch/lintian.txt")"
! grep -E '^E: ' "$scratch/lintian.txt" >&2 || fail "lintian reports errors"
grep -q '^O: pemlo-cpt: statically-linked-binary \[usr/bin/pemlo-cli\]' "$scratch/lintian.txt" ||
  fail "lintian does not report the static pemlo-cli as overridden"

dpkg-deb -x "$deb" "$scratch/root"
root=$scratch/root

# The changelog's newest entry is this version's.
changed=$(zcat "$root/usr/share/doc/pemlo-cpt/changelog.gz" | dpkg-parsechangelog -l- -S Version)
[ "$changed" = "$version" ] || fail "the changelog's newest entry is $changed, not $version"

# The software-centre metadata validates, and every screenshot it shows is one of the
# repository's, joined to the project's web address.
appstreamcli validate --no-net "$root/$metainfo" >"$scratch/appstream.txt" 2>&1 ||
  fail "appstreamcli: $(cat "$scratch/appstream.txt")"
images=$(sed -n 's|.*<image>\(.*\)</image>.*|\1|p' "$root/$metainfo")
[ -n "$images" ] || fail "the metadata shows no screenshot"
for image in $images; do
  [[ "$image" == "$homepage"* && -f "$source_dir/${image#"$homepage"}" ]] ||
    fail "the metadata shows $image, which is not a file of the repository under $homepage"
done

# The menu entry validates, and what it names is in the package.
desktop=$root/usr/share/applications/pemlo-cpt.desktop
desktop-file-validate "$desktop" || fail "the desktop entry does not validate"
grep -qx 'Exec=pemlo' "$desktop" || fail "the desktop entry does not start pemlo"
grep -qx 'Icon=pemlo-cpt' "$desktop" || fail "the desktop entry names another icon"
grep -Eq '^Categories=(.*;)?Science;(.*;)?Engineering;' "$desktop" ||
  grep -Eq '^Categories=(.*;)?Engineering;(.*;)?Science;' "$desktop" || fail "categories"
# The program takes no file name, so it must not be offered for opening files.
! grep -q '^MimeType=' "$desktop" || fail "the desktop entry declares a file type the program cannot open"

# Both manual pages render without a warning and carry the version; the desktop
# program's points to the command line's, and pemlo-cli's covers the whole command
# line.
for page in pemlo pemlo-cli; do
  manual=$root/usr/share/man/man1/$page.1.gz
  warnings=$(LC_ALL=C.UTF-8 MANWIDTH=100 man --warnings -l "$manual" 2>&1 >"$scratch/$page.txt") || fail "man -l $page failed"
  [ -z "$warnings" ] || fail "the manual page $page(1) warns: $warnings"
  zcat "$manual" | sed 's/\\-/-/g' >"$scratch/$page.roff"
  grep -q "Pemlo CPT $version" "$scratch/$page.roff" || fail "the manual page $page(1) does not carry version $version"
done
for path in $(grep -oE '/usr/[a-z0-9/.-]+[a-z0-9]' "$scratch/pemlo.roff" | sort -u); do
  [ -e "$root$path" ] || fail "pemlo(1) points to $path, which the package does not hold"
done
grep -q '^\.BR pemlo-cli (1)' "$scratch/pemlo.roff" || fail "pemlo(1) does not refer to pemlo-cli(1)"
cli=$root/usr/bin/pemlo-cli
commands=$("$cli" --help | awk '/^Subcommands:/ {on = 1; next} on && !NF {exit} on {print $1}')
[ -n "$commands" ] || fail "pemlo-cli --help lists no command"
for command in $commands; do
  grep -q "^\.B pemlo-cli $command\$" "$scratch/pemlo-cli.roff" || fail "the manual's synopsis lacks $command"
  for option in $("$cli" "$command" --help | grep -oE '(^| |,)--?[a-z][a-z0-9-]*' | grep -oE -- '--?[a-z0-9-]+' | sort -u); do
    grep -qE -- "(^|[ ,])$option( |$)" "$scratch/pemlo-cli.roff" || fail "the manual does not explain $command $option"
  done
done
for status in 0 1 2 3 4; do
  grep -A1 '^\.TP' "$scratch/pemlo-cli.roff" | grep -qx "\.B $status" || fail "the manual does not explain exit status $status"
done

# The command line runs from the unpacked tree, as it would installed: it links no
# library at all, and hands report over to its helper.
[ "$("$cli" --version)" = "pemlo-cli $version" ] || fail "pemlo-cli --version"
if ldd "$cli" >/dev/null 2>&1 && ldd "$cli" | grep -qi qt; then fail "pemlo-cli links Qt"; fi
printf 'title\r\n%.0s' {1..10} >"$scratch/s.txt"
for i in 1 2 3 4 5 6 7 8 9; do printf '0.%d,%d,0.0%d\r\n' "$i" "$i" "$i" >>"$scratch/s.txt"; done
"$cli" classify "$scratch/s.txt" --data-units si >/dev/null || fail "pemlo-cli classify"
QT_QPA_PLATFORM=offscreen "$cli" report "$scratch/s.txt" --data-units si --pdf "$scratch/s.pdf" >/dev/null 2>&1 ||
  fail "pemlo-cli report"
[ "$(head -c 5 "$scratch/s.pdf" 2>/dev/null)" = "%PDF-" ] || fail "pemlo-cli report wrote no PDF"

[ "$failures" -eq 0 ] && echo "check-package: $(basename "$deb") holds what it should"
exit $((failures > 0))
