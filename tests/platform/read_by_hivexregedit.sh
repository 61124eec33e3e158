#!/bin/sh
# read_by_hivexregedit.sh SAMPLE_PROGRAM: lets hivexregedit (Debian: libwin-hivex-perl) merge a file
# that the store wrote into a hive, and compares what the hive then holds with what is meant.
set -eu

# shellcheck source=tests/support/hivexregedit.sh
. "$(dirname "$0")/../support/hivexregedit.sh"
cd "$folder"
"$1" "$folder"

# What an earlier import left: the store's file deletes the rules key, and with it rule 001.
cat > before.reg << 'END'
Windows Registry Editor Version 5.00

[HKEY_CURRENT_USER\A]
"old"=dword:00000001

[HKEY_CURRENT_USER\A\Mail]

[HKEY_CURRENT_USER\A\Mail\001]
"Name"="deleted"

END
hivexregedit --merge hive --prefix 'HKEY_CURRENT_USER' before.reg
# The reader takes lines that end in LF only.
tr -d '\r' < sample.reg > merged.reg
hivexregedit --merge hive --prefix 'HKEY_CURRENT_USER' merged.reg
hivexregedit --export hive --prefix 'HKEY_CURRENT_USER' '\' > found.txt

cat > wanted.txt << 'END'
Windows Registry Editor Version 5.00

[HKEY_CURRENT_USER\]

[HKEY_CURRENT_USER\A]
"w"=hex(1):16,04,00,00

[HKEY_CURRENT_USER\A\Mail]

[HKEY_CURRENT_USER\A\Mail\000]
@=hex(1):78,00,00,00
"Break"=hex(1):61,00,0d,00,0a,00,62,00,00,00
"Expand"=hex(2):25,00,41,00,25,00,00,00
"Kind"=hex(b):31,32,33,34,35,36,37,38
"Multi"=hex(7):61,00,00,00,62,00,00,00,00,00
"Name"=hex(1):e9,00,74,00,e9,00,20,00,22,00,5c,00,00,00
"Open"=hex(1):61,00
"Quote\"d\\"=hex(3):
"Value"=hex(3):00,01,02,03,04,05,06,07,08,09,0a,0b,0c,0d,0e,0f,10,11,12,13,14,15,16,17,18,19,1a,1b,1c,1d,1e,1f,20,21,22,23,24,25,26,27,28,29,2a,2b,2c,2d,2e,2f,30,31,32,33,34,35,36,37,38,39,3a,3b
"Version"=dword:00050000

END
diff wanted.txt found.txt
