#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# packages.sh GROUP...: installs the missing Debian packages of the groups. Needs root or sudo.
set -euo pipefail

build="g++ cmake ninja-build qt6-base-dev qt6-base-dev-tools qt6-svg-dev libgl1-mesa-dev libsqlite3-dev libqcustomplot-dev pkg-config libzip-dev libxlsxwriter-dev libmariadb-dev libssl-dev libsecret-1-dev libboost-dev"
run="libqt6svg6 qt6-qpa-plugins fonts-dejavu-core xdg-utils"
display="xvfb x11vnc openbox"
tests="libgtest-dev libgmock-dev libqt6svg6 fonts-dejavu-core poppler-utils python3-xlrd python3-openpyxl python3-uno gnumeric libreoffice-calc-nogui xdg-utils mariadb-server-core mariadb-client-core galera-4 openssl"
slides="libreoffice-impress-nogui python3-pil" # for tools/makeslides.py only
peers="python3-xlwt" # for tools/bench.sh only
packaging="dpkg-dev file desktop-file-utils appstream xvfb openbox xdotool python3"
checks="mold clang clang-format clang-tidy libclang-rt-14-dev python3"

wanted=""
for group in "$@"; do
  case $group in
    build | run | display | tests | packaging | checks | slides | peers) wanted+=" ${!group}" ;;
    *) echo "packages.sh: no group '$group'" >&2; exit 2 ;;
  esac
done

missing=""
for package in $wanted; do
  [ "$(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null)" = installed ] || missing+=" $package"
done
[ -n "$missing" ] || { echo "Packages: all installed."; exit 0; }

echo "Packages to install:$missing"
as_root=""
if [ "$(id -u)" -ne 0 ]; then
  command -v sudo >/dev/null || { echo "Run this as root, or install sudo." >&2; exit 1; }
  as_root=sudo
fi
export DEBIAN_FRONTEND=noninteractive
$as_root apt-get update -q
# shellcheck disable=SC2086
$as_root apt-get install -y -q --no-install-recommends $missing
