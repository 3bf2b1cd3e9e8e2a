#!/usr/bin/env bash
# Installs the Debian packages the project needs, if any is missing, and the
# extra packages given as arguments (scripts/ensure-deps.sh [PACKAGE...]).
set -euo pipefail
packages=(cmake ninja-build g++ ccache qtbase5-dev libqt5svg5-dev libboost-dev libudunits2-dev
          libgtest-dev libgmock-dev libbenchmark-dev gcovr
          libhowardhinnant-date-dev tzdata libcsv-dev libfast-float-dev poppler-utils
          qtdeclarative5-dev qml-module-qtquick2 qml-module-qtquick-window2 qml-module-qtquick-controls2
          qml-module-qtquick-templates2 qml-module-qtquick-layouts qml-module-qtquick-dialogs qml-module-qt-labs-platform
          qml-module-qtquick-controls qml-module-qt-labs-folderlistmodel "$@")
missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
[ ${#missing[@]} -eq 0 ] && exit 0
echo "Installing: ${missing[*]}"
sudo=""
[ "$(id -u)" -eq 0 ] || sudo="sudo"
$sudo apt-get update -qq
DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq "${missing[@]}" >/dev/null
