#!/usr/bin/env bash
# Builds the qorvane command-line tool natively and plays a person's week
# with the add-in loaded into the simulated mail client (`qorvane demo`):
# mails written now to go later, the ticks that send them, a client closed
# for three days catching up, two mails given one schedule at once, a
# send-and-exit run. Arguments go to the demo (--days N, --quiet,
# --script FILE, or --help for the story format).
set -euo pipefail
cd "$(dirname "$0")/.."

bash scripts/install-deps.sh
cmake --preset linux >/dev/null
cmake --build --preset linux --target qorvane
build/linux/tools/qorvane demo "$@"
