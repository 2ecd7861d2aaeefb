#!/usr/bin/env bash
# Installs the build into a scratch root, as a package would, and checks the file list and
# that the installed programs run from there.
# usage: check-install.sh BUILD_DIR ROOT WITH_GUI(0|1)
set -euo pipefail
build=$1 root=$2 gui=$3

rm -rf "$root"
DESTDIR="$root" cmake --install "$build" --prefix /usr > /dev/null

expected=(
  usr/bin/kelvora-cli
  usr/share/bash-completion/completions/kelvora-cli
  usr/share/doc/kelvora/README.md
  usr/share/doc/kelvora/changelog.gz
  usr/share/doc/kelvora/copyright
  usr/share/man/man1/kelvora-cli.1.gz
)
if [ "$gui" = 1 ]; then
  expected+=(
    usr/bin/kelvora
    usr/share/applications/net.kelvora.Kelvora.Decrypt.desktop
    usr/share/applications/net.kelvora.Kelvora.Encrypt.desktop
    usr/share/applications/net.kelvora.Kelvora.desktop
    usr/share/icons/hicolor/scalable/apps/net.kelvora.Kelvora.svg
    usr/share/icons/hicolor/scalable/mimetypes/application-x-kelvora-container.svg
    usr/share/man/man1/kelvora.1.gz
    usr/share/metainfo/net.kelvora.Kelvora.metainfo.xml
    usr/share/mime/packages/net.kelvora.Kelvora.xml
  )
fi

actual=$(cd "$root" && find . -type f -o -type l | sed 's|^\./||' | LC_ALL=C sort)
wanted=$(printf '%s\n' "${expected[@]}" | LC_ALL=C sort)
if [ "$actual" != "$wanted" ]; then
  echo "installed files differ from the expected list:"
  diff <(echo "$wanted") <(echo "$actual") || true
  exit 1
fi

for program in kelvora-cli kelvora; do
  [ "$program" = kelvora ] && [ "$gui" != 1 ] && continue
  [ -x "$root/usr/bin/$program" ] || { echo "$program is not executable"; exit 1; }
  version=$(QT_QPA_PLATFORM=offscreen "$root/usr/bin/$program" --version | head -n 1)
  case $version in
    "$program "[0-9]*.[0-9]*) ;;
    *) echo "installed $program --version says '$version'"; exit 1 ;;
  esac
done
echo "installed $(echo "$actual" | wc -l) files"
