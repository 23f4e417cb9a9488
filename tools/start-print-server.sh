#!/usr/bin/env bash
# Gives the tests a real printer: starts the CUPS print server if it is not running,
# adds a PDF printer queue "PemloPDF" (the cups-pdf backend) and makes it the default
# printer. Every page printed to it becomes a PDF file in cups-pdf's output directory
# (the "Out" line of /etc/cups/cups-pdf.conf: ${HOME}/PDF of the user who printed).
# Installs nothing: tools/install-deps.sh brings cups, cups-client, cups-bsd and
# printer-driver-cups-pdf. Needs root (or password-less sudo); without it the tests
# that need a printer say so and skip.
set -euo pipefail

queue=PemloPDF
SUDO=""
if [ "$(id -u)" -ne 0 ]; then
  if sudo -n true 2>/dev/null; then SUDO="sudo -n"; else
    echo "start-print-server: needs root to start cupsd" >&2; exit 1
  fi
fi

for tool in cupsd lpstat lpadmin; do
  command -v "$tool" >/dev/null 2>&1 || [ -x "/usr/sbin/$tool" ] || {
    echo "start-print-server: $tool is missing (run tools/install-deps.sh)" >&2; exit 1; }
done
export PATH="$PATH:/usr/sbin"

running() { lpstat -r 2>/dev/null | grep -q 'is running'; }

# No service manager in containers and CI: start the daemon directly; it forks into
# the background and opens its socket a moment later.
if ! running; then
  $SUDO mkdir -p /run/cups
  $SUDO cupsd
  for _ in $(seq 100); do running && break; sleep 0.1; done
fi
running || { echo "start-print-server: cupsd did not start" >&2; exit 1; }

# lpadmin warns that printer drivers are deprecated; cups-pdf has no other form yet.
quiet() { "$@" 2> >(grep -v -i 'deprecated' >&2); }

if ! lpstat -p "$queue" >/dev/null 2>&1; then
  # The driver that ships with printer-driver-cups-pdf, as the server lists it.
  model=$(lpinfo -m 2>/dev/null | awk '/cups-pdf\/CUPS-PDF_opt\.ppd/ {print $1; exit}')
  if [ -n "$model" ]; then
    quiet $SUDO lpadmin -p "$queue" -E -v cups-pdf:/ -m "$model"
  else
    quiet $SUDO lpadmin -p "$queue" -E -v cups-pdf:/ -P /usr/share/ppd/cups-pdf/CUPS-PDF_opt.ppd
  fi
fi
$SUDO lpadmin -d "$queue"
$SUDO cupsenable "$queue" 2>/dev/null || true
$SUDO cupsaccept "$queue" 2>/dev/null || true

out=$(sed -n 's/^Out[[:space:]]\+//p' /etc/cups/cups-pdf.conf 2>/dev/null | tail -n 1)
echo "start-print-server: default printer $queue; its PDFs go to ${out:-\${HOME\}/PDF}"
