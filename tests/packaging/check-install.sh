#!/usr/bin/env bash
# Installs the build into a scratch root, as a package would, and checks the file list and
# that the installed programs run from there.
# usage: check-install.sh BUILD_DIR ROOT WITH_GUI(0|1)
set -euo pipefail
build=$1 root=$2 gui=$3

rm -rf "$root"
DESTDIR="$root" cmake --install "$build" --prefix /usr > /dev/null

programs=(kelvora-cli)
expected=(
  usr/bin/kelvora-cli
  usr/share/bash-completion/completions/kelvora-cli
  usr/share/doc/kelvora/{README.md,changelog.gz,copyright}
  usr/share/man/man1/kelvora-cli.1.gz
)
if [ "$gui" = 1 ]; then
  programs+=(kelvora)
  expected+=(
    usr/bin/kelvora
    usr/share/applications/net.kelvora.Kelvora{.Decrypt,.Encrypt,}.desktop
    usr/share/icons/hicolor/scalable/{apps/net.kelvora.Kelvora,mimetypes/application-x-kelvora-container}.svg
    usr/share/man/man1/kelvora.1.gz
    usr/share/metainfo/net.kelvora.Kelvora.metainfo.xml
    usr/share/mime/packages/net.kelvora.Kelvora.xml
  )
fi

actual=$(cd "$root" && find . -type f -o -type l | sed 's|^\./||' | LC_ALL=C sort)
diff <(printf '%s\n' "${expected[@]}" | LC_ALL=C sort) <(echo "$actual") ||
  { echo "installed files differ from the expected list (< expected, > installed)"; exit 1; }

# Running each installed program from the tree also shows it is executable there.
for program in "${programs[@]}"; do
  version=$(QT_QPA_PLATFORM=offscreen "$root/usr/bin/$program" --version | head -n 1)
  [[ $version =~ ^$program\ [0-9]+\.[0-9]+ ]] ||
    { echo "installed $program --version says '$version'"; exit 1; }
done
