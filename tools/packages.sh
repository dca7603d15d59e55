# Installs the Debian packages that are missing; says which. Sourced by run.sh and test.sh.

tarn_build_packages="cmake ninja-build g++ ccache pkg-config qt6-base-dev qt6-svg-dev
    qt6-multimedia-dev qt6-image-formats-plugins libjpeg-dev libmpv-dev
    libavformat-dev libavcodec-dev libswscale-dev libraw-dev liblcms2-dev libheif-dev libjxl-dev
    libtiff-dev libseccomp-dev libcfitsio-dev libpugixml-dev zlib1g-dev liblz4-dev libzstd-dev nettle-dev
    libeigen3-dev liberfa-dev libexempi-dev libsqlite3-dev"
tarn_run_packages="qt6-qpa-plugins fonts-liberation fonts-dejavu-core"
tarn_test_packages="libgtest-dev poppler-utils ffmpeg clang-format"

tarn_install() {
    missing=""
    for package in "$@"; do
        dpkg-query -W -f '${Status}' "$package" 2>/dev/null | grep -q '^install ok installed$' ||
            missing="$missing $package"
    done
    [ -n "$missing" ] || return 0
    echo "Installing:$missing"
    as_root=""
    if [ "$(id -u)" -ne 0 ]; then
        command -v sudo >/dev/null || {
            echo "These packages are missing, and there is no sudo to install them:$missing" >&2
            return 1
        }
        as_root=sudo
    fi
    $as_root apt-get -q update
    # shellcheck disable=SC2086
    $as_root env DEBIAN_FRONTEND=noninteractive apt-get -q install -y --no-install-recommends $missing
}
