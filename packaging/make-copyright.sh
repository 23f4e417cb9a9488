#!/usr/bin/env bash
# Writes the package's copyright file: the project's own (packaging/copyright), then
# the executables that carry other code linked in statically, with that code's
# copyright lines and licence texts as the Debian packages it was built from state
# them, so that the notices are those of the very versions linked.
#   packaging/make-copyright.sh OUT OWN-COPYRIGHT PUGIXML-COPYRIGHT CLI11-COPYRIGHT DRAGONBOX-COPYRIGHT
set -euo pipefail
out=$1 own=$2 pugixml=$3 cli11=$4 dragonbox=$5

# The copyright lines and licence name of a DEP-5 file's "Files: *" paragraph.
holders() {
  awk 'BEGIN { RS = ""; FS = "\n" }
       $1 == "Files: *" {
         for (i = 2; i <= NF; i++) {
           if ($i ~ /^Copyright:/) { on = 1; sub(/^Copyright:[ \t]*/, "", $i) }
           else if ($i !~ /^[ \t]/) on = 0
           # Some upstream lines repeat the word ("Copyright: Copyright 2020 ..."); the field says it once.
           if (on) { gsub(/^[ \t]+/, "", $i); sub(/^Copyright[ \t]+/, "", $i); if ($i != "") print " " $i }
         }
         exit
       }' "$1"
}
licence_of() {
  awk 'BEGIN { RS = ""; FS = "\n" } $1 == "Files: *" {
         for (i = 2; i <= NF; i++) if ($i ~ /^License:/) { sub(/^License:[ \t]*/, "", $i); print $i; exit } }' "$1"
}
# The stand-alone paragraph that holds a licence's text.
licence_text() {
  awk -v name="License: $2" 'BEGIN { RS = ""; FS = "\n" } $1 == name { print; exit }' "$1"
}

pugixml_licence=$(licence_of "$pugixml")
cli11_licence=$(licence_of "$cli11")
# Dragonbox is offered under Apache-2.0 or BSL-1.0; it is taken under the latter.
dragonbox_licence=BSL-1.0
licence_of "$dragonbox" | grep -qw "$dragonbox_licence" || { echo "make-copyright: $dragonbox offers no $dragonbox_licence" >&2; exit 1; }
for part in "$pugixml_licence" "$cli11_licence" "$(holders "$pugixml")" "$(holders "$cli11")" "$(holders "$dragonbox")" \
            "$(licence_text "$pugixml" "$pugixml_licence")" "$(licence_text "$cli11" "$cli11_licence")" \
            "$(licence_text "$dragonbox" "$dragonbox_licence")"; do
  [ -n "$part" ] || { echo "make-copyright: no notice found in $pugixml, $cli11 or $dragonbox" >&2; exit 1; }
done
linked="all-rights-reserved and $pugixml_licence and $cli11_licence and $dragonbox_licence"

{
  cat "$own"
  cat <<NOTICE

Files: usr/libexec/pemlo-cpt/pemlo-report
Copyright: 1999-2026 The Pemlo CPT authors
$(holders "$pugixml")
$(holders "$cli11")
$(holders "$dragonbox")
License: $linked
Comment: The report helper carries pugixml ($pugixml_licence), which reads BRO-XML,
 CLI11 ($cli11_licence), which reads the options, and Dragonbox ($dragonbox_licence),
 which writes numbers, all linked in statically.

Files: usr/bin/pemlo-cli
Copyright: 1999-2026 The Pemlo CPT authors
$(holders "$pugixml")
$(holders "$cli11")
$(holders "$dragonbox")
 the GNU C Library and the GCC runtime libraries: see /usr/share/doc/libc6/copyright
 and /usr/share/doc/libgcc-s1/copyright
License: $linked and LGPL-2.1+ and GPL-3+ with GCC-exception-3.1
Comment: The command line is linked statically: it carries pugixml, CLI11 and
 Dragonbox as the report helper does, and the GNU C Library and the GCC runtime
 libraries (libgcc and libstdc++).

$(licence_text "$pugixml" "$pugixml_licence")

$(licence_text "$cli11" "$cli11_licence")

$(licence_text "$dragonbox" "$dragonbox_licence")

License: LGPL-2.1+
 The GNU C Library is free software under the GNU Lesser General Public License,
 version 2.1 or (at your option) any later version. On Debian systems the full
 text of the licence is in /usr/share/common-licenses/LGPL-2.1.

License: GPL-3+ with GCC-exception-3.1
 The GCC runtime libraries are free software under the GNU General Public
 License, version 3 or (at your option) any later version, with the GCC Runtime
 Library Exception, version 3.1. On Debian systems the full text of the licence
 is in /usr/share/common-licenses/GPL-3, and the exception in
 /usr/share/doc/libgcc-s1/copyright.
NOTICE
} >"$out"
