#!/usr/bin/env bash
# Builds the Debian package as "make package" does and checks it: the same files as the
# installed tree, dependencies found from the shared libraries, and lintian's verdict.
# usage: check-deb.sh BUILD_DIR ROOT SCRATCH
source "$(dirname "$0")/check-lib.sh"
build=$1 root=$2 scratch=$3

rm -rf "$scratch"
(cd "$build" && cpack -G DEB -B "$scratch" > "$scratch.log" 2>&1) || { cat "$scratch.log"; exit 1; }
debs=("$scratch"/kelvora_*.deb)
[ ${#debs[@]} -eq 1 ] && [ -f "${debs[0]}" ] || { echo "expected one kelvora_*.deb"; exit 1; }
deb=${debs[0]}

listed=$(dpkg-deb -c "$deb" | awk '$1 !~ /^d/ { print $6 }' | sed 's|^\./||' | LC_ALL=C sort)
installed=$(cd "$root" && find . -type f -o -type l | sed 's|^\./||' | LC_ALL=C sort)
[ "$listed" = "$installed" ] || { fail "the package holds other files than the install:";
  diff <(echo "$installed") <(echo "$listed") || true; }

version=$("$build"/src/cli/kelvora-cli --version | head -n 1 | cut -d' ' -f2)
[ "$(dpkg-deb -f "$deb" Package)" = kelvora ] || fail "the package is not named kelvora"
[ "$(dpkg-deb -f "$deb" Version)" = "$version" ] || fail "the package version is not $version"
depends=$(dpkg-deb -f "$deb" Depends)
for library in libc6 libdeflate0 libstdc++6; do
  grep -q "$library " <<< "$depends" || fail "Depends lacks $library: $depends"
done

# Errors and warnings both fail; the informational tags left are explained in the README.
lintian --fail-on error,warning "$deb" 2> /dev/null || fail "lintian finds errors or warnings"
exit $status
