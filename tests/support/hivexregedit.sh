# Sourced by the tests that let hivexregedit (Debian: libwin-hivex-perl) read what the stores wrote:
# sees that it is there, and makes `folder`, which goes with the test.
# shellcheck shell=sh
command -v hivexregedit > /dev/null || {
  echo "hivexregedit is missing: apt-get install libwin-hivex-perl" >&2
  exit 1
}
folder=$(mktemp -d)
# The reader opens its files in UTF-8 only when Perl is told so.
export PERL_UNICODE=D
trap 'rm -rf "$folder"' EXIT
