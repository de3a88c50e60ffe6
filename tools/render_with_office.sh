#!/usr/bin/env bash
# Shows how another program draws a drawing: tools/render_with_office.sh DRAWING [OUTPUT FOLDER]
# makes a PDF and one PNG for each page beside it, with LibreOffice Draw, to compare with our own pictures.
set -euo pipefail

if [[ $# -lt 1 || ! -f $1 ]]; then
  echo "usage: tools/render_with_office.sh DRAWING [OUTPUT FOLDER]" >&2
  exit 2
fi
drawing=$1
folder=${2:-$(dirname "$drawing")}

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
"$root/tools/install_packages.sh" libreoffice-draw poppler-utils

mkdir -p "$folder"
# A profile of its own, so that an office that is open does not get in the way.
profile=$(mktemp -d)
trap 'rm -rf "$profile"' EXIT
soffice "-env:UserInstallation=file://$profile" --headless --convert-to pdf --outdir "$folder" "$drawing" >/dev/null

pdf=$folder/$(basename "${drawing%.*}").pdf
pdftoppm -png -r 100 "$pdf" "${pdf%.pdf}-office"
echo "$pdf"
ls "${pdf%.pdf}-office"*.png
