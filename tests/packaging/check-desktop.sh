#!/usr/bin/env bash
# Checks the installed desktop files with the tools desktops use: the menu entries, the
# AppStream data, and the MIME package that names ".vexo" files.
# usage: check-desktop.sh ROOT SCRATCH
source "$(dirname "$0")/check-lib.sh"
root=$1 scratch=$2/mime
share=$root/usr/share

for entry in "$share"/applications/*.desktop; do
  # Hints and warnings count as failures too: the entries are ours to keep clean.
  report=$(desktop-file-validate "$entry" 2>&1) || fail "$entry is not valid"
  [ -z "$report" ] || fail "$report"
  icon=$(sed -n 's/^Icon=//p' "$entry")
  [ -f "$share/icons/hicolor/scalable/apps/$icon.svg" ] || fail "$entry names icon '$icon', not installed"
done

appstreamcli validate --no-net "$share"/metainfo/net.kelvora.Kelvora.metainfo.xml ||
  fail "the metainfo does not validate"

mime=$share/mime/packages/net.kelvora.Kelvora.xml
xmllint --noout "$mime" || fail "$mime is not well-formed"
rm -rf "$scratch" && mkdir -p "$scratch/packages"
cp "$mime" "$scratch/packages/"
XDG_DATA_DIRS=$2 update-mime-database "$scratch" || fail "update-mime-database refused the package"
grep -qx '50:application/x-kelvora-container:\*.vexo' "$scratch/globs2" ||
  fail "*.vexo is not mapped to application/x-kelvora-container"
icon=$(sed -n 's/^application\/x-kelvora-container://p' "$scratch/icons")
[ -f "$share/icons/hicolor/scalable/mimetypes/$icon.svg" ] ||
  fail "the container type's icon '$icon' is not installed"

# The entry that opens containers must claim exactly the type the package defines.
grep -qx 'MimeType=application/x-kelvora-container;' \
  "$share/applications/net.kelvora.Kelvora.Decrypt.desktop" ||
  fail "the decrypting entry claims another type than the MIME package defines"
exit $status
