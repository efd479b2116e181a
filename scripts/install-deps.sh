#!/usr/bin/env bash
# Installs the Debian packages that Tallyview needs to build, test and run, when they are
# missing. Works as root or as a user with sudo. The one list of the project's packages.
set -euo pipefail

PACKAGES=(
  build-essential cmake ninja-build pkg-config
  libgtest-dev libgmock-dev libbenchmark-dev libtiff-dev time
  clang-format clang-tidy clang libclang-rt-14-dev llvm-14
  qt6-base-dev qt6-base-dev-tools qt6-image-formats-plugins libgl-dev
  fonts-liberation libleptonica-dev libtesseract-dev tesseract-ocr-eng
  xvfb xauth imagemagick poppler-utils xdotool
  desktop-file-utils appstream shared-mime-info dpkg-dev file man-db
  libqt6svg6 debhelper lintian debootstrap devscripts
)

missing=()
for p in "${PACKAGES[@]}"; do
  if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed'; then
    missing+=("$p")
  fi
done
[ ${#missing[@]} -eq 0 ] && exit 0

echo "Installing: ${missing[*]}"
SUDO=""
if [ "$(id -u)" -ne 0 ]; then
  SUDO="sudo"
fi
export DEBIAN_FRONTEND=noninteractive
$SUDO apt-get update -qq
$SUDO apt-get install -y -qq --no-install-recommends "${missing[@]}"
