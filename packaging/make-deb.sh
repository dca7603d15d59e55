#!/usr/bin/env bash
# Builds the Debian packages into build/deb/packages: packaging/make-deb.sh [-j N]
# Needs what run.sh installs, and dpkg-dev.
set -euo pipefail
cd "$(dirname "$0")/.."
export CXXFLAGS="-D_FORTIFY_SOURCE=2 -fstack-protector-strong -Wformat -Werror=format-security -ffile-prefix-map=$PWD=."
export LDFLAGS="-Wl,-z,relro,-z,now -Wl,--as-needed"
cmake --preset release -B build/deb -DCMAKE_INSTALL_PREFIX=/usr -DTARN_BENCH=OFF -DTARN_TESTS=OFF
cmake --build build/deb "$@"
rm -rf build/deb/packages
(cd build/deb && cpack -G DEB)
ls -l build/deb/packages/*.deb
