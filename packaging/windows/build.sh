#!/usr/bin/env bash
# Cross-builds the program for Windows on Debian 12 and packs it:
#
#   packaging/windows/build.sh         what is missing is installed first, through apt-get
#
# makes, in build/windows/packages,
#
#   blockhouse-<version>-windows.zip   portable: unpack it anywhere, the lists are kept beside the program
#   blockhouse-<version>-setup.exe     installs for the current user
#
# The program is linked statically against Qt and QScintilla, which are built from Debian's source packages. That takes
# about a quarter of an hour on two cores, once; the result stays in a folder outside the checkout,
# $BLOCKHOUSE_WINDOWS_CACHE or ~/.cache/blockhouse-windows. A step that was broken off is taken up where it stopped when this is started again.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/../.."
root=$PWD
windows=$root/packaging/windows
build=$root/build/windows
cache=${BLOCKHOUSE_WINDOWS_CACHE:-${XDG_CACHE_HOME:-$HOME/.cache}/blockhouse-windows}
jobs=$(nproc)
version=$(sed -n 's/^project(blockhouse VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt)
packages=$build/packages
portable=$build/blockhouse-$version

scripts/install_dependencies.sh windows
mkdir -p "$cache" "$build"

# step <what> <function>: does it and says how long it took.
step() {
  local began=$SECONDS
  echo "== $1"
  "$2"
  echo "== $1: $(((SECONDS - began) / 60)) min $(((SECONDS - began) % 60)) s"
}

# once <what> <function>: the same, unless it was done before; its result is in the cache.
once() {
  local done=$cache/$2.done
  [[ -e $done ]] && return
  step "$1" "$2"
  touch "$done"
}

# What the machine's packages were made of: the sources of the same versions, from where apt-get gets the packages.
apt_with_sources() {
  local folder=$cache/apt
  mkdir -p "$folder/lists/partial" "$folder/archives/partial"
  apt-get indextargets --format 'deb-src [signed-by=/usr/share/keyrings/debian-archive-keyring.gpg] $(REPO_URI) $(RELEASE) $(COMPONENT)' \
    'Origin: Debian' 'Created-By: Packages' 'Component: main' | sort -u >"$folder/sources.list"
  apt-get -q -o Dir::Etc::SourceList="$folder/sources.list" -o Dir::Etc::SourceParts=/dev/null \
    -o Dir::State::Lists="$folder/lists" -o Dir::Cache::Archives="$folder/archives" -o APT::Sandbox::User="$(id -un)" \
    -o Dir::Cache::pkgcache="" -o Dir::Cache::srcpkgcache="" "$@"
}

# source_of <package>: name=version of the source that the installed package was built from.
source_of() {
  dpkg-query --show --showformat='${source:Package}=${source:Version}' "$1"
}

# unpacked <package> <folder>: its source, with Debian's changes, as that folder of the cache; <folder>.source names it.
unpacked() {
  local source version
  source=$(source_of "$1")
  version=${source#*=}
  mkdir -p "$cache/sources"
  apt_with_sources update
  [[ -s $cache/apt/sources.list ]] || fail "apt-get knows no Debian archive: run apt-get update first"
  (cd "$cache/sources" && apt_with_sources source --download-only "$source")
  rm -rf "${cache:?}/$2"
  dpkg-source --no-copy --extract "$cache/sources/${source%%=*}_${version#*:}.dsc" "$cache/$2"
  echo "$source" >"$cache/$2.source"
}

fail() {
  echo "$*" >&2
  exit 1
}

qt_sources() { unpacked qt6-base-dev qt; }
qscintilla_sources() { unpacked libqscintilla2-qt6-dev qscintilla; }

# Without what the program does not use, and without what would need more than Debian's cross compiler.
configured_qt() {
  local off=(concurrent dbus direct2d directwrite directwrite3 glib icu network printsupport sql tabletevent testlib xml)
  local features=() feature
  for feature in "${off[@]}"; do
    features+=("-DFEATURE_$feature=OFF")
  done
  cmake -S "$cache/qt" -B "$cache/qt-build" -G Ninja --fresh \
    -DCMAKE_TOOLCHAIN_FILE="$windows/toolchain.cmake" -DCMAKE_INSTALL_PREFIX="$cache/prefix" \
    -DQT_HOST_PATH=/usr -DQT_HOST_PATH_CMAKE_DIR="/usr/lib/$(gcc -print-multiarch)/cmake" \
    -DCMAKE_BUILD_TYPE=MinSizeRel -DBUILD_SHARED_LIBS=OFF -DQT_BUILD_EXAMPLES=OFF -DQT_BUILD_TESTS=OFF \
    -DINPUT_opengl=no "${features[@]}"
}

built_qt() {
  cmake --build "$cache/qt-build" --parallel "$jobs"
  cmake --install "$cache/qt-build"
}

cleared_up() { rm -rf "$cache/qt-build" "$cache/qt" "$cache/qscintilla-build"; }

# What is built against the toolkit for Windows, with the host's programs of the same toolkit.
with_qt=(-G Ninja -DCMAKE_TOOLCHAIN_FILE="$windows/toolchain.cmake" -DCMAKE_PREFIX_PATH="$cache/prefix"
  -DBLOCKHOUSE_WINDOWS_PREFIX="$cache/prefix" -DQT_HOST_PATH=/usr
  -DQT_HOST_PATH_CMAKE_DIR="/usr/lib/$(gcc -print-multiarch)/cmake")

built_qscintilla() {
  cmake -S "$windows/qscintilla" -B "$cache/qscintilla-build" "${with_qt[@]}" -DSOURCE="$cache/qscintilla" \
    -DCMAKE_BUILD_TYPE=Release -DCMAKE_INSTALL_PREFIX="$cache/prefix"
  cmake --build "$cache/qscintilla-build" --parallel "$jobs"
  cmake --install "$cache/qscintilla-build"
}

built_program() {
  cmake -S "$windows/artwork" -B "$build/artwork" -G Ninja
  cmake --build "$build/artwork"
  cmake -S "$root" -B "$build/program" "${with_qt[@]}" -DCMAKE_BUILD_TYPE=Release \
    -DBLOCKHOUSE_TESTS=OFF -DBLOCKHOUSE_BENCH=OFF -DCMAKE_AUTORCC_OPTIONS=--no-zstd \
    -DBLOCKHOUSE_ARTWORK_RENDERER="$build/artwork/render_artwork"
  cmake --build "$build/program" --parallel "$jobs" --target blockhouse
}

# The folder that both packages are made of.
laid_out() {
  rm -rf "$portable"
  mkdir -p "$portable/docs/images"
  x86_64-w64-mingw32-strip -o "$portable/blockhouse.exe" "$build/program/bin/blockhouse.exe"
  cp LICENSE "$portable/LICENSE.txt"
  cp docs/user-guide.md docs/reliability.md "$portable/docs/"
  cp docs/images/*.png "$portable/docs/images/"
  cp -r samples/workspace "$portable/examples"
  laid_out_licences
  sources >"$portable/SOURCES.txt"
  sed -i 's/$/\r/' "$portable"/*.txt "$portable"/licences/*.txt
}

# Of everything that is linked into the program, with the notices of what those hold in turn.
laid_out_licences() {
  local name
  mkdir -p "$portable/licences"
  for name in qt6-base-dev libqscintilla2-qt6-dev mingw-w64-x86-64-dev g++-mingw-w64-x86-64-posix; do
    cp "/usr/share/doc/$name/copyright" "$portable/licences/$name.txt"
  done
  for name in GPL-2 GPL-3 LGPL-3; do
    cp "/usr/share/common-licenses/$name" "$portable/licences/$name.txt"
  done
}

# source_line <name> <source> <licences>
source_line() { printf '  %-12s %s, %s\n' "$1" "$2" "$3"; }

# Whoever passes the binaries on has to say where their sources are.
sources() {
  cat <<TEXT
Blockhouse $version is free software under the GNU General Public License, version 3 or any later one: LICENSE.txt.
Its source is blockhouse-$version-source.tar.gz, which lies beside this package; packaging/windows/build.sh in it makes the
package.

blockhouse.exe holds these libraries, built from Debian 12's source packages without changes of our own:

TEXT
  source_line Qt "$(<"$cache/qt.source")" "LGPL 3, GPL 2 or GPL 3, with Freetype, HarfBuzz, libjpeg, libpng, PCRE2 and zlib inside"
  source_line QScintilla "$(<"$cache/qscintilla.source")" "GPL 3, with Scintilla inside"
  source_line MinGW-w64 "$(source_of mingw-w64-x86-64-dev)" "public domain and permissive licences"
  source_line GCC "$(built_using g++-mingw-w64-x86-64-posix)" "GPL 3 with the runtime library exception"
  cat <<TEXT

licences/ has their terms and notices. On Debian 12, with source packages enabled, "apt-get source <name>=<version>" fetches
each of them. build.sh does so, and how it configures and builds them is written there; with it the program can be linked
against a changed Qt.
TEXT
}

# The source of the compiler itself: that of its package only wraps it.
built_using() {
  dpkg-query --show --showformat='${Built-Using}' "$1" | tr ',' '\n' | sed -n 's/^ *\(gcc-[0-9]*\) (= \(.*\))$/\1=\2/p'
}

packed_source() { git archive --format=tar.gz --prefix="blockhouse-$version/" -o "$packages/blockhouse-$version-source.tar.gz" HEAD; }

packed_portable() {
  (cd "$build" && zip -q -9 -r "$packages/blockhouse-$version-windows.zip" "blockhouse-$version")
}

packed_installer() {
  makensis -V2 -DVERSION="$version" -DFILES="$portable" -DICON="$build/program/packaging/windows/blockhouse.ico" \
    -DRESULT="$packages/blockhouse-$version-setup.exe" "$windows/installer.nsi"
}

once "Qt's source" qt_sources
once "QScintilla's source" qscintilla_sources
once "Configuring Qt" configured_qt
once "Building Qt" built_qt
once "Building QScintilla" built_qscintilla
once "Clearing up" cleared_up
step "Building the program" built_program
rm -rf "$packages"
mkdir -p "$packages"
step "Laying out the packages" laid_out
step "Packing the portable program" packed_portable
step "Packing the installer" packed_installer
step "Packing the source" packed_source
ls -l "$packages"
