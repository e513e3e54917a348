#!/bin/sh
# Writes the first sheet of a workbook as CSV: UTF-8, semicolons between fields. It bears the name that the plug-in calls
# on every system; here it is a shell script over LibreOffice's converter.
#   xls2csv.vbs WORKBOOK TARGET
# Exit status: 0 the target is there, 1 the workbook can't be converted, 2 wrong arguments, 127 LibreOffice isn't there.
set -u
export LC_ALL=C.UTF-8

fail() {
  status=$1
  shift
  echo "xls2csv: $*" >&2
  exit "$status"
}

[ $# -eq 2 ] || fail 2 "two arguments are needed, the workbook and the target"
workbook=$1
target=$2
[ -r "$workbook" ] || fail 1 "$workbook can't be read"
office=$(command -v soffice || command -v libreoffice) ||
  fail 127 "LibreOffice isn't installed: there is no program soffice (Debian: libreoffice-calc-nogui)"

# A profile of its own: two conversions at a time, or one beside a person's office, would refuse to start.
work=$(mktemp -d) || fail 1 "no temporary folder can be made"
trap 'rm -rf "$work"' EXIT
trap 'exit 1' HUP INT TERM
mkdir "$work/out" || fail 1 "$work can't be written"
# The input stands under a plain name, as the workbook's own could be taken for an option, with the ending of its kind.
case $workbook in
  *.[xX][lL][sS][xX]) kind=xlsx ;;
  *.[oO][dD][sS]) kind=ods ;;
  *) kind=xls ;;
esac
cp -- "$workbook" "$work/in.$kind" || fail 1 "$workbook can't be copied"

# 59 semicolon, 34 double quote, 76 UTF-8, from line 1; cells as they are shown.
"$office" "-env:UserInstallation=file://$work/profile" --headless --norestore --nolockcheck \
  --convert-to 'csv:Text - txt - csv (StarCalc):59,34,76,1,,0,false,true,false' \
  --outdir "$work/out" "$work/in.$kind" >"$work/said" 2>&1
if [ ! -f "$work/out/in.csv" ]; then
  cat "$work/said" >&2
  fail 1 "$workbook can't be converted"
fi
# Whole or not at all: renamed in beside the target.
cp -- "$work/out/in.csv" "$target.part" && mv -f -- "$target.part" "$target" || fail 1 "$target can't be written"
