#!/bin/sh
# Runs editor_test.lua in a headless Neovim against a scratch copy of
# bodies.def. Exits 77 (skipped) where nvim is not installed.
#   editor_test.sh <quillet-lsp> <scratch-dir>
set -eu
if ! command -v nvim >/dev/null 2>&1; then
  echo "SKIPPED: nvim is not installed (Debian: apt-get install neovim)"
  exit 77
fi
here=$(cd "$(dirname "$0")" && pwd)
mkdir -p "$2"
cp "$here/bodies.def" "$2/bodies.def"
QUILLET_LSP=$1 DEFINITION=$2/bodies.def HOME=$2 XDG_STATE_HOME=$2 XDG_DATA_HOME=$2 \
  timeout 120 nvim --headless --clean -c "luafile $here/editor_test.lua" </dev/null
