#!/usr/bin/env bash
# Renders the installed manual pages as man does, with every warning on, and checks that
# kelvora-cli's page covers each command its --help lists.
# usage: check-manuals.sh KELVORA_CLI MAN1_DIR WITH_GUI(0|1)
set -euo pipefail
cli=$1 man1=$2 gui=$3
status=0
fail() { echo "$*"; status=1; }

pages=(kelvora-cli)
[ "$gui" = 1 ] && pages+=(kelvora)
export LC_ALL=C.UTF-8 MANWIDTH=80
for page in "${pages[@]}"; do
  file=$man1/$page.1.gz
  warnings=$(man --warnings -l "$file" 2>&1 > /dev/null) || fail "man cannot show $file"
  [ -z "$warnings" ] || fail "$file: $warnings"
  text=$(man -l "$file" 2> /dev/null)
  version=$("$cli" --version | head -n 1 | cut -d' ' -f2)
  grep -q "Kelvora $version" <<< "$text" || fail "$file does not name version $version"
done

# The overview lists commands as "  NAME   summary" between "Commands:" and a blank line.
commands=$("$cli" --help | sed -n '/^Commands:/,/^$/p' | awk 'NF > 1 { print $1 }')
[ -n "$commands" ] || fail "kelvora-cli --help lists no commands"
text=$(man -l "$man1/kelvora-cli.1.gz" 2> /dev/null)
for command in $commands; do
  grep -qx "   $command" <<< "$text" || fail "kelvora-cli(1) has no section for '$command'"
  grep -q "Usage: kelvora-cli $command" <<< "$text" || fail "kelvora-cli(1) lacks the usage of '$command'"
done
exit $status
