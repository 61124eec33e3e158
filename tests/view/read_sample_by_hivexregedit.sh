#!/bin/sh
# read_sample_by_hivexregedit.sh HIVE_MAKER BEFORE.reg AFTER.reg: lets hivexregedit (Debian:
# libwin-hivex-perl) merge the sample identity, as it was and with "bonne affaire" among the subject
# words of rule 000, into hives of their own, and compares what the hives hold: that one value
# differs, and it is the sorted list.
set -eu

# shellcheck source=tests/support/hivexregedit.sh
. "$(dirname "$0")/../support/hivexregedit.sh"

export_of() {
  mkdir "$folder/$1"
  "$2" "$folder/$1"
  # The reader takes lines that end in LF only.
  iconv -f UTF-16 -t UTF-8 "$3" | tr -d '\r' > "$folder/$1/file.reg"
  hivexregedit --merge "$folder/$1/hive" --prefix HKEY_CURRENT_USER "$folder/$1/file.reg"
  hivexregedit --export "$folder/$1/hive" --prefix HKEY_CURRENT_USER '\' > "$folder/$1.txt"
}
export_of before "$1" "$2"
export_of after "$1" "$3"

bytes() {
  printf '%s\0' "$@" | iconv -f UTF-8 -t WINDOWS-1252 | od -An -v -tx1 | tr -d '\n' |
    sed 's/^ //; s/ /,/g'
}
kept_before='100 % gratuit|Félicitations'
kept_after='casino|crédit immédiat|gagné|loterie|offre exceptionnelle|régime miracle|€ par jour'
list() {
  IFS='|'
  # shellcheck disable=SC2086
  printf '"Value"=hex(3):%s,00,00' "$(bytes $1)"
}
{
  printf '< %s\n' "$(list "$kept_before|$kept_after")"
  printf '%s\n' '---'
  printf '> %s\n' "$(list "$kept_before|bonne affaire|$kept_after")"
} > "$folder/wanted.txt"
diff "$folder/before.txt" "$folder/after.txt" | sed 1d > "$folder/found.txt" || true
diff "$folder/wanted.txt" "$folder/found.txt"
