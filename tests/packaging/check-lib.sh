# Sourced by the check scripts: strict mode, and fail, which reports a finding and lets the
# check go on; the script ends with "exit $status".
set -euo pipefail
status=0
fail() { echo "$*"; status=1; }
