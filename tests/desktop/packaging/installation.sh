#!/bin/bash
# installation.sh part build-folder: tests one part of the installation of what was built.
set -euo pipefail
part=$1 build=$2
id=org.orvantile.Orvantile
scratch=$(mktemp -d)

trap 'rm -rf "$scratch"' EXIT

fail() { echo "FAILED: $*"; exit 1; }
need() { command -v "$1" >/dev/null || fail "$1 is not installed"; }

# Files of an installation, relative to its prefix.
files=(
  bin/orvantile
  bin/orvantile-qt-helper
  lib/orvantile/qt6/generic/orvantile.so
  share/applications/$id.desktop
  share/dbus-1/services/$id.service
  share/doc/orvantile/changelog.Debian.gz
  share/doc/orvantile/copyright
  share/icons/hicolor/scalable/apps/$id.svg
  share/icons/hicolor/symbolic/apps/$id-keyboard-fill-symbolic.svg
  share/icons/hicolor/symbolic/apps/$id-keyboard-symbolic.svg
  share/icons/hicolor/symbolic/apps/$id-symbolic.svg
  share/man/man1/orvantile-qt-helper.1.gz
  share/man/man1/orvantile.1.gz
  share/metainfo/$id.metainfo.xml
  share/orvantile/autostart/$id.desktop
  share/orvantile/session/qt-helper.conf
  share/orvantile/session/qt-helper.sh
  share/orvantile/sounds/Pop.wav
)
for size in 16 22 24 32 48 64 128 256; do
  files+=(share/icons/hicolor/${size}x$size/apps/$id.png)
done

checkTree() {
  for file in "${files[@]}"; do
    [ -s "$1/$file" ] || fail "$file is missing in $1"
  done
  local strays
  strays=$(find "$1" -type f -perm /022)
  [ -z "$strays" ] || fail "writable for others: $strays"
  strays=$(find "$1" -type f -perm /111 ! -path '*/bin/*')
  [ -z "$strays" ] || fail "executable: $strays"
  [ ! -e "$1/share/orvantile/updates.conf" ] || fail "an update feed is installed by default"
}

install() { cmake --install "$build" --prefix "$1" >"$scratch/install.log" || { cat "$scratch/install.log"; fail install; }; }

# makePackage version folder: builds the Debian package and prints its path.
makePackage() {
  need cpack
  (cd "$build" && cpack -G DEB -R "$1" -B "$2") >"$scratch/cpack.log" 2>&1 || { cat "$scratch/cpack.log"; fail cpack; }
  local package=("$2"/*_"$1"-*.deb)
  [ -f "${package[0]}" ] || fail "no package of version $1"
  echo "${package[0]}"
}

case $part in
tree)
  install "$scratch/prefix"
  checkTree "$scratch/prefix"
  grep -qx "Exec=$scratch/prefix/bin/orvantile" "$scratch/prefix/share/dbus-1/services/$id.service" ||
    fail "the bus would start another program"
  DESTDIR=$scratch/staged install /usr
  checkTree "$scratch/staged/usr"
  grep -qx "Exec=/usr/bin/orvantile" "$scratch/staged/usr/share/dbus-1/services/$id.service" ||
    fail "the bus would start the program in the staging folder"
  [ "$(cd "$scratch/prefix" && find . | sort)" = "$(cd "$scratch/staged/usr" && find . | sort)" ] ||
    fail "prefix and staged installation differ"
  ;;
relocation)
  # Moved after its installation, the program still starts and opens nothing of the old place.
  need strace
  install "$scratch/first"
  mv "$scratch/first" "$scratch/second"
  mkdir -p "$scratch/home" "$scratch/run"
  chmod 700 "$scratch/run"
  env -i HOME="$scratch/home" XDG_RUNTIME_DIR="$scratch/run" PATH="$PATH" QT_QPA_PLATFORM=offscreen \
    ASAN_OPTIONS=detect_leaks=0 timeout 3 strace -f -e trace=file -o "$scratch/trace" "$scratch/second/bin/orvantile" || [ $? = 124 ] ||
    fail "the moved program ended by itself"
  ! grep -q "$scratch/first" "$scratch/trace" || fail "the old place is asked for: $(grep -m1 "$scratch/first" "$scratch/trace")"
  ;;
descriptions)
  need desktop-file-validate
  need appstreamcli
  install "$scratch/prefix"
  desktop-file-validate "$scratch/prefix/share/applications/$id.desktop" \
    "$scratch/prefix/share/orvantile/autostart/$id.desktop" || fail "desktop entries"
  appstreamcli validate --no-net --pedantic "$scratch/prefix/share/metainfo/$id.metainfo.xml" || fail "metainfo"
  need man
  warnings=$(MANWIDTH=100 LC_ALL=C.UTF-8 man --warnings -l "$scratch/prefix/share/man/man1/orvantile.1.gz" 2>&1 >/dev/null)
  [ -z "$warnings" ] || fail "manual page: $warnings"
  for icon in "$scratch"/prefix/share/icons/hicolor/*x*/apps/$id.png; do
    size=$(basename "$(dirname "$(dirname "$icon")")")
    file "$icon" | grep -q "${size%x*} x ${size#*x}," || fail "$icon has another size"
  done
  ;;
package)
  need lintian
  package=$(makePackage 0.1.0 "$scratch/packages")
  dpkg-deb --info "$package"
  lintian --fail-on error "$package" || fail lintian
  mkdir "$scratch/root"
  dpkg-deb --extract "$package" "$scratch/root"
  checkTree "$scratch/root/usr"
  [ "$(find "$scratch/root" -mindepth 1 -maxdepth 1)" = "$scratch/root/usr" ] || fail "files outside /usr"
  ;;
upgrade)
  need fakeroot
  old=$(makePackage 0.1.0 "$scratch/old")
  new=$(makePackage 0.1.1 "$scratch/new")
  root=$scratch/root
  mkdir -p "$root"/var/lib/dpkg/{info,updates,triggers}
  touch "$root/var/lib/dpkg/status"
  # What the package depends on is not in this empty system.
  dpkgHere() { fakeroot dpkg --root="$root" --log=/dev/null --force-depends,not-root,script-chrootless "$@" >"$scratch/dpkg.log" 2>&1 || { cat "$scratch/dpkg.log"; fail "dpkg $*"; }; }
  version() { dpkg-query --admindir="$root/var/lib/dpkg" -W -f '${Version} ${db:Status-Status}' orvantile; }
  dpkgHere --install "$old"
  [ "$(version)" = "0.1.0-1 installed" ] || fail "installed is $(version)"
  checkTree "$root/usr"
  dpkgHere --install "$new"
  [ "$(version)" = "0.1.1-1 installed" ] || fail "upgraded is $(version)"
  checkTree "$root/usr"
  dpkgHere --purge orvantile
  left=$(find "$root" -mindepth 1 ! -path "$root/var*" | head)
  [ -z "$left" ] || fail "left behind: $left"
  ;;
*) fail "no part $part" ;;
esac
echo "$part is in order"
