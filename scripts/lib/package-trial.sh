#!/usr/bin/env bash
# The part of scripts/package-trial that runs inside the fresh system.
set -euo pipefail
suite=$1
export DEBIAN_FRONTEND=noninteractive
apt() { apt-get -q -y --no-install-recommends "$@" >/trial/apt.log 2>&1 || { tail -30 /trial/apt.log >&2; return 1; }; }
fail() { echo "package-trial: $*" >&2; exit 1; }

# wait_for WHAT COMMAND…: polls for up to 30 s.
wait_for() {
  local what=$1 try
  shift
  for try in {1..300}; do
    ! "$@" >/dev/null 2>&1 || return 0
    sleep 0.1
  done
  fail "timed out waiting for $what; Talmo says: $(cat /trial/talmo.log 2>/dev/null)"
}

# A copy of a system that is in use has all that is needed, much that nobody needs, and slow triggers.
if [ "$suite" = here ]; then
  change() { dpkg --no-triggers "--$@" >/trial/apt.log 2>&1 || { tail -30 /trial/apt.log >&2; return 1; }; }
  remove_unneeded() { :; }
  places='/etc /usr'
else
  change() { apt "$@"; }
  remove_unneeded() { apt autoremove --purge; }
  places=/
fi
# All that a package may bring.
files() { find $places -xdev \( -path /proc -o -path /sys -o -path /dev -o -path /tmp -o -path /trial -o -path /var \) \
  -prune -o -print | LC_ALL=C sort; }

if [ "$suite" != here ]; then
  apt update
  # What a desktop has, and who speaks; what Talmo itself needs must come with its package.
  apt install xvfb openbox xterm xdotool x11-utils pulseaudio pulseaudio-utils flite fonts-dejavu-core dbus
fi
# A trial that failed may have left it.
dpkg --purge talmo >/dev/null 2>&1 || true
remove_unneeded
files > /trial/before

# The X server refuses the focus to a window that is not shown yet.
focus_notes() {
  local window
  window=$(xdotool search --onlyvisible --name '^Notes$' | tail -1)
  [ -n "$window" ] && xdotool windowfocus "$window" && [ "$(xdotool getwindowfocus)" = "$window" ]
}

start_desktop() {
  export HOME=/tmp/user XDG_RUNTIME_DIR=/tmp/runtime DISPLAY=:7
  mkdir -p "$HOME/.config/talmo" && mkdir -m 700 "$XDG_RUNTIME_DIR"
  # The welcome of the first start would take the focus from the terminal.
  echo '{"linux.welcomeShown": true}' > "$HOME/.config/talmo/settings.json"
  Xvfb :7 -screen 0 1024x768x24 >/trial/xvfb.log 2>&1 &
  wait_for "the display" xdpyinfo
  openbox >/trial/openbox.log 2>&1 &
  pulseaudio --daemonize=no --exit-idle-time=-1 -n --load="module-native-protocol-unix" \
    --load="module-null-sink sink_name=speaker" --load="module-remap-source master=speaker.monitor source_name=microphone" \
    >/trial/pulseaudio.log 2>&1 &
  wait_for "the sound server" pactl set-default-source microphone
  xterm -title Notes -e sh -c 'stty -icanon; exec cat > /tmp/notes' &
  wait_for "a window" focus_notes
  flite -voice slt -t "the computer does not start after the last update" -o /tmp/speech.wav
}

start_talmo() {
  : > /trial/talmo.log
  QT_LOGGING_RULES="talmo.general.debug=true" talmo >>/trial/talmo.log 2>&1 &
  talmo=$!
  wait_for "Talmo to start" grep -q "ready:" /trial/talmo.log
}

stop_talmo() {
  kill -TERM "$talmo"
  wait "$talmo" || fail "Talmo did not exit cleanly: $(cat /trial/talmo.log)"
}

has_more_than() { [ "$(stat -c %s /tmp/notes)" -gt "$1" ]; }

# dictate WHEN: the words of the sentence must be in the terminal afterwards, and nowhere else.
dictate() {
  local before
  before=$(stat -c %s /tmp/notes)
  : > /trial/talmo.log
  wait_for "the focus" focus_notes
  xdotool keydown Control_R
  wait_for "the recording" grep -q "state: recording" /trial/talmo.log
  paplay --device=speaker /tmp/speech.wav
  xdotool keyup Control_R
  wait_for "the end of the dictation" grep -q "state: idle" /trial/talmo.log
  wait_for "the text" has_more_than "$before"
  echo "$1: $(tail -c +$((before + 1)) /tmp/notes)"
  tail -c +$((before + 1)) /tmp/notes | grep -qi "computer" || fail "$1: the words did not arrive"
}

# A call on the session bus starts the installed Talmo.
activate() {
  dbus-run-session -- dbus-send --session --print-reply --dest=io.github.talmo.Talmo /io/github/talmo/Talmo \
    io.github.talmo.Talmo1.Status | grep -q '"idle"' || fail "a call on the session bus did not start Talmo"
  kill -TERM "$(pidof talmo)"
  wait_for "the activated Talmo to exit" bash -c '! pidof talmo'
}

start_desktop

echo "Installing an older version"
change install /trial/old.deb
talmo --version
start_talmo
dictate "after the installation"

echo "Upgrading while it runs"
change install /trial/new.deb
[ -f /usr/share/man/man1/talmo.1.gz ] || fail "the upgrade brought no manual page"
dictate "after the upgrade, with the Talmo of before"
stop_talmo
talmo --version
start_talmo
dictate "after a restart"
talmoctl transcribe /tmp/speech.wav | grep -qi computer || fail "talmoctl transcribe heard something else"
stop_talmo
activate
for file in gnome-shell/extensions/talmo-43@talmo.github.io/metadata.json bash-completion/completions/talmoctl \
  zsh/vendor-completions/_talmoctl fish/vendor_completions.d/talmoctl.fish man/man1/talmoctl.1.gz \
  icons/hicolor/48x48/apps/io.github.talmo.Talmo.png metainfo/io.github.talmo.Talmo.metainfo.xml; do
  [ -s "/usr/share/$file" ] || fail "the package lacks /usr/share/$file"
done
for program in Talmo talmoctl; do
  exec=$(sed -n 's/^Exec=//p' "/usr/share/applications/io.github.talmo.$program.desktop")
  [ -x "$exec" ] || fail "the desktop entry of $program starts “$exec”, which KWin would not let paste"
done

echo "Purging"
change purge talmo
[ -z "$(dpkg-query -W -f '${db:Status-Status}' talmo 2>/dev/null)" ] || fail "talmo is still known to dpkg"
[ ! -e /usr/bin/talmo ] && [ ! -e /usr/bin/talmoctl ] || fail "the programs are still there"
remove_unneeded
files > /trial/after
left=$(LC_ALL=C comm -13 /trial/before /trial/after | grep -iE 'talmo' || true)
[ -z "$left" ] || fail "left behind: $left"
[ -f "$HOME/.config/talmo/settings.json" ] || fail "the purge removed a user's settings"
echo "The package installs, upgrades and purges; Talmo dictated after each step."
