#!/usr/bin/env bash
# Times our open and draw and other programs on the same drawings, in one run, and prints the ratios: SVG against
# vsd2xhtml, which writes SVG in XHTML, and PDF against LibreOffice's PDF.
#
# Usage: compare.sh QUORVEL FILE...     QUORVEL is the command, built for release; plain_drawing.py makes large files
# Others, where they are installed: vsd2xhtml (libvisio-tools), soffice (libreoffice-draw). Needs hyperfine and python3.
# RUNS in the environment: how many runs the medians are of (5). LIMIT: seconds after which another program is stopped
# (300); the ratio then is marked with ">".
set -euo pipefail
quorvel=$(realpath "$1")
shift
runs=${RUNS:-5} limit=${LIMIT:-300}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

printf '%-48s %9s %12s %9s %12s\n' drawing 'SVG, ms' vsd2xhtml 'PDF, ms' soffice
for file in "$@"; do
  file=$(realpath "$file")
  commands=("'$quorvel' export '$file' -o '$work/picture.svg'" "'$quorvel' export '$file' -o '$work/picture.pdf'")
  names=(svg pdf)
  if command -v vsd2xhtml >/dev/null; then
    commands+=("timeout $limit vsd2xhtml '$file' >'$work/picture.xhtml'")
    names+=(vsd2xhtml)
  fi
  if command -v soffice >/dev/null; then
    commands+=("timeout $limit soffice -env:UserInstallation=file://$work/profile --headless --convert-to pdf \
      --outdir '$work' '$file'")
    names+=(soffice)
  fi
  hyperfine --warmup 1 --runs "$runs" --ignore-failure --export-json "$work/times.json" "${commands[@]}" >/dev/null 2>&1
  python3 - "$work/times.json" "$limit" "$(basename "$file")" "${names[@]}" <<'PY'
import json, sys
results = json.load(open(sys.argv[1]))["results"]
limit, file = float(sys.argv[2]), sys.argv[3]
medians = {name: row["median"] for name, row in zip(sys.argv[4:], results)}


def beside(ours, name):
    if name not in medians:
        return "-"
    return f"{'>' if medians[name] >= limit else ''}{medians[name] / medians[ours]:.1f} times"


print(f"{file:<48} {1000 * medians['svg']:>9.1f} {beside('svg', 'vsd2xhtml'):>12} "
      f"{1000 * medians['pdf']:>9.1f} {beside('pdf', 'soffice'):>12}")
PY
done
