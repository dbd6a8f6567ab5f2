# The Debian 12 packages that Talmo needs. Sourced by the other scripts, so that there is a single list. The names are the
# same in Debian 13 and, but for clang 19, in the package lists of Ubuntu 24.04. Nobody has built it there: that is what
# scripts/fresh noble tries.

build_packages=(
  ca-certificates
  g++ cmake ninja-build pkg-config ccache
  qt6-base-dev qt6-svg-dev qt6-tools-dev qt6-tools-dev-tools qt6-l10n-tools libgl-dev qcoro-qt6-dev
  libglib2.0-dev libxkbcommon-dev libsndfile1-dev
  libarchive-dev libfftw3-dev libpulse-dev libcanberra-dev libspeexdsp-dev libwebrtc-audio-processing-dev
  libpocketsphinx-dev libsphinxbase-dev flite1-dev
  libxcb1-dev libxcb-res0-dev libxcb-xinput-dev libxcb-xtest0-dev
  libevdev-dev libudev-dev
  libwayland-dev libwayland-bin wayland-protocols plasma-wayland-protocols
)
# To run Talmo on an existing desktop.
run_packages=(
  pocketsphinx-en-us libcanberra-pulse sound-theme-freedesktop wamerican-small
)
# A virtual desktop and a synthetic voice.
demo_packages=(
  xvfb openbox picom trayer pulseaudio pulseaudio-utils flite fontconfig fonts-dejavu-core
)
# The programs that the tests use, and the tools of CI.
test_packages=(
  libgtest-dev libgmock-dev libgtk-3-dev libsm-dev libice-dev xterm xfonts-base xclip x11-xkb-utils
  desktop-file-utils appstream python3 mandoc iproute2 python3-onnx dbus-daemon dbus-bin openssl strace fonts-noto-color-emoji
  x11-xserver-utils at-spi2-core gir1.2-atspi-2.0 python3-gi orca speech-dispatcher copyq pocketsphinx-testdata libfaketime
  sway xwayland foot grim wl-clipboard weston
  umockdev libumockdev-dev valgrind
  qt6-wayland gir1.2-gtk-4.0
)
# The desktops of scripts/desktops, each with what its tests need. Most of it is KWin and GNOME Shell themselves.
kde_packages=(
  kwin-wayland libkf5service-bin xwayland wl-clipboard dbus-daemon dbus-bin pulseaudio flite
  python3-gi gir1.2-gtk-3.0 gir1.2-gtk-4.0 gir1.2-vte-2.91 qt6-wayland
)
gnome_packages=(
  gnome-shell xwayland dbus-daemon libglib2.0-bin python3-dbusmock python3-gi gir1.2-gtk-3.0 gir1.2-gtk-4.0 gir1.2-vte-2.91 gjs
  pulseaudio pulseaudio-utils flite qt6-wayland
)
# What Talmo is compared with.
bench_packages=(
  xdotool xclip curl copyq keepassxc wtype wl-clipboard
)
# More synthetic voices, and recordings of people.
accuracy_packages=(
  festival festvox-us-slt-hts festvox-kallpc16k alsa-utils
)
translation_packages=(
  qt6-l10n-tools python3
)
# To make the Debian package, and to install it in a system of its own.
package_packages=(
  debhelper dpkg-dev lintian librsvg2-bin appstream desktop-file-utils debootstrap xterm xdotool x11-utils dbus
)
# The desktops of scripts/tour, without what Talmo has no use for there.
tour_desktops=(xfce i3 mate lxqt cinnamon plasma)
tour_xfce_packages=(xfwm4 xfce4-panel xfdesktop4)
tour_i3_packages=(i3-wm)
tour_mate_packages=(marco mate-panel mate-settings-daemon-common)
tour_lxqt_packages=(openbox lxqt-panel lxqt-themes)
tour_cinnamon_packages=(cinnamon)
tour_plasma_packages=(kwin-x11 plasma-workspace plasma-desktop kded5)
check_packages=(
  git clang-19 clang-format-19 clang-tidy-19 libclang-rt-19-dev llvm-19
)

# install_missing PACKAGE…: installs the missing packages, as root or with sudo.
install_missing() {
  local missing=() package
  for package in "$@"; do
    [ "$(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null)" = installed ] || missing+=("$package")
  done
  [ ${#missing[@]} -gt 0 ] || return 0
  echo "Installing Debian packages: ${missing[*]}"
  local as_root=()
  if [ "$(id -u)" != 0 ]; then
    command -v sudo >/dev/null || { echo "Missing packages, and no sudo to install them: ${missing[*]}" >&2; return 1; }
    as_root=(sudo)
  fi
  "${as_root[@]}" apt-get update -q
  "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -q -y --no-install-recommends "${missing[@]}"
}

# Makes cache entries valid across build folders and checkouts.
export CCACHE_BASEDIR=$PWD CCACHE_NOHASHDIR=1 CCACHE_SLOPPINESS=pch_defines,time_macros

# build_preset PRESET [TARGET…]: configures if necessary, and builds.
build_preset() {
  local preset=$1
  shift
  [ -f "build/$preset/build.ninja" ] || cmake --preset "$preset"
  cmake --build --preset "$preset" ${@:+--target "$@"}
}
