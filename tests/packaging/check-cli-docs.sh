#!/usr/bin/env bash
# Checks what documents kelvora-cli against its own --help texts: the installed manual pages,
# rendered as man does with every warning on, and the completion, loaded the way
# bash-completion finds it.
# usage: check-cli-docs.sh KELVORA_CLI ROOT SCRATCH WITH_GUI(0|1)
source "$(dirname "$0")/check-lib.sh"
cli=$1 root=$2 scratch=$3 gui=$4

# The overview lists commands as "  NAME   summary" between "Commands:" and a blank line.
commands=$("$cli" --help | sed -n '/^Commands:/,/^$/p' | awk 'NF > 1 { print $1 }' | LC_ALL=C sort)
[ -n "$commands" ] || fail "kelvora-cli --help lists no commands"

man1=$root/usr/share/man/man1
pages=(kelvora-cli)
[ "$gui" = 1 ] && pages+=(kelvora)
version=$("$cli" --version | head -n 1 | cut -d' ' -f2)
export LC_ALL=C.UTF-8 MANWIDTH=80
for page in "${pages[@]}"; do
  warnings=$(man --warnings -l "$man1/$page.1.gz" 2>&1 > /dev/null) || fail "man cannot show $page.1.gz"
  [ -z "$warnings" ] || fail "$page.1.gz: $warnings"
  man -l "$man1/$page.1.gz" 2> /dev/null | grep -q "Kelvora $version" || fail "$page.1.gz does not name version $version"
done
text=$(man -l "$man1/kelvora-cli.1.gz" 2> /dev/null)
for command in $commands; do
  grep -qx "   $command" <<< "$text" || fail "kelvora-cli(1) has no section for '$command'"
  grep -q "Usage: kelvora-cli $command" <<< "$text" || fail "kelvora-cli(1) lacks the usage of '$command'"
done

rm -rf "$scratch" && mkdir -p "$scratch/restore here" && touch "$scratch/restore.txt"
# offers EXPECTED WORD...: Tab after "kelvora-cli WORD..." in the scratch folder offers the
# lines of EXPECTED, in byte order, with the completion loaded as bash-completion finds it.
offers() {
  local expected=$1 got
  shift
  got=$(cd "$scratch" && XDG_DATA_DIRS=$root/usr/share bash --norc --noprofile -c '
    source /usr/share/bash-completion/bash_completion
    _completion_loader kelvora-cli
    complete -p kelvora-cli | grep -q -- "-F _kelvora_cli" || { echo "not loaded" >&2; exit 1; }
    COMP_WORDS=(kelvora-cli "$@")
    COMP_CWORD=$#
    _kelvora_cli
    printf "%s\n" "${COMPREPLY[@]}"' bash "$@" | LC_ALL=C sort)
  [ "$got" = "$expected" ] || fail "'$*' offers:" $got "; expected:" $expected
}

offers "$(printf '%s\nhelp\n' "$commands" | LC_ALL=C sort)" ""
offers "$(grep '^en' <<< "$commands")" en
# Each command offers exactly the long options its --help table lists, and --help.
for command in $commands; do
  offers "$( ("$cli" "$command" --help | grep -oE '^ +(-[a-zA-Z], )?--[a-z-]+' |
    grep -oE -- '--[a-z-]+'; echo --help) | LC_ALL=C sort -u)" "$command" --
done
offers "restore here" decrypt -C re
offers "$(printf 'restore here\nrestore.txt')" encrypt -o re
offers "$(printf 'de\nen\nes\nfr')" encrypt-text --lang ""
exit $status
