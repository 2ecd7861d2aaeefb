#!/usr/bin/env bash
# Loads the installed completion the way bash-completion finds it, and checks what Tab
# offers against what kelvora-cli's own --help texts say.
# usage: check-completion.sh KELVORA_CLI ROOT SCRATCH
set -euo pipefail
cli=$1 root=$2 scratch=$3
status=0
fail() { echo "$*"; status=1; }

# complete_words WORD... prints, one a line and sorted, what Tab offers for the last word.
complete_words() {
  XDG_DATA_DIRS=$root/usr/share bash --norc --noprofile -c '
    source /usr/share/bash-completion/bash_completion
    _completion_loader kelvora-cli
    complete -p kelvora-cli | grep -q -- "-F _kelvora_cli" || { echo "not loaded" >&2; exit 1; }
    COMP_WORDS=(kelvora-cli "$@")
    COMP_CWORD=$#
    _kelvora_cli
    printf "%s\n" "${COMPREPLY[@]}"' bash "$@" | LC_ALL=C sort
}

commands=$("$cli" --help | sed -n '/^Commands:/,/^$/p' | awk 'NF > 1 { print $1 }' | LC_ALL=C sort)
[ -n "$commands" ] || fail "kelvora-cli --help lists no commands"

got=$(complete_words "")
[ "$got" = "$(printf '%s\nhelp\n' "$commands" | LC_ALL=C sort)" ] ||
  fail "an empty first word offers: $got"
got=$(complete_words "en")
[ "$got" = "$(grep '^en' <<< "$commands")" ] || fail "'en' offers: $got"

# Each command offers exactly the long options its --help table lists, and --help.
for command in $commands; do
  documented=$( ("$cli" "$command" --help | grep -oE '^ +(-[a-zA-Z], )?--[a-z-]+' |
    grep -oE -- '--[a-z-]+'; echo --help) | LC_ALL=C sort -u)
  got=$(complete_words "$command" "--")
  [ "$got" = "$documented" ] || fail "'$command --' offers:" $got "; --help lists:" $documented
done

rm -rf "$scratch" && mkdir -p "$scratch/restore here" && touch "$scratch/restore.txt"
got=$(cd "$scratch" && complete_words decrypt -C re)
[ "$got" = "restore here" ] || fail "'decrypt -C re' offers: $got"
got=$(cd "$scratch" && complete_words encrypt -o re)
[ "$got" = "$(printf 'restore here\nrestore.txt')" ] || fail "'encrypt -o re' offers: $got"
got=$(complete_words encrypt-text --lang "")
[ "$got" = "$(printf 'de\nen\nes\nfr')" ] || fail "'encrypt-text --lang' offers: $got"
exit $status
