#!/usr/bin/env bash
# Makes the files of a release from a clean clone, checks them, and writes their sums. The same
# commit gives the same bytes, in whichever folder and at whatever time this runs.
# usage: scripts/release.sh [COMMIT [FOLDER]], by default HEAD and build/dist
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

commit="$(git rev-parse --verify "${1:-HEAD}^{commit}")"
folder="${2:-build/dist}"
mkdir -p "$folder"
folder="$(realpath "$folder")"
if [[ -n "$(ls -A "$folder")" ]]; then
  echo "release: $folder is not empty." >&2
  exit 1
fi
work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT

# Whatever of the caller could change a byte. Compiled anew: a cache could hide a difference.
umask 022
SOURCE_DATE_EPOCH="$(git log -1 --format=%ct "$commit")"
export SOURCE_DATE_EPOCH TZ=UTC LC_ALL=C.UTF-8 CCACHE_DISABLE=1
unset CFLAGS CXXFLAGS CPPFLAGS LDFLAGS XZ_DEFAULTS XZ_OPT GZIP DESTDIR

fail() {
  echo "release: $*" >&2
  exit 1
}

made="$work/made"
mkdir "$made"
git clone --quiet --no-checkout . "$work/source"
cd "$work/source"
git checkout --quiet --detach "$commit"
version="$(sed -n 's/^project(Oriolemark VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt)"
name="oriolemark-$version"
echo "release: $name from $commit"
date="$(sed -n "s/^## \[$version\] - //p" CHANGELOG.md)"
[[ -n "$date" ]] || fail "CHANGELOG.md has no dated section for $version."
packaged="$(sed -n 's/^ -- .*>  //p' packaging/changelog | head -n 1)"
[[ "$(date -d "$packaged" +%F)" == "$date" ]] || fail "packaging/changelog has another date."
grep -qF "date=\"$date\"/>" packaging/*.metainfo.xml ||
  fail "the entry for software catalogues has another date than CHANGELOG.md."

scripts/install.sh
git -c tar.umask=0022 archive --format=tar --prefix="$name/" "$commit" |
  gzip -9n >"$made/$name.tar.gz"
cmake --preset release --log-level=WARNING -DBUILD_TESTING=OFF \
  -DCMAKE_CXX_FLAGS="\"-ffile-prefix-map=$PWD=.\""
cmake --build --preset release --target packaging
(cd build/release && cpack >/dev/null)
cp build/release/package/oriolemark_*.deb "$made"
# Packed again, because the packager writes the owner and the time of packing.
mkdir "$work/tree" "$work/deb"
tar -xzf build/release/package/oriolemark-*.tar.gz -C "$work/tree" --strip-components=1
tar -C "$work/tree" --transform "s,^\.,$name-linux-$(uname -m)," --sort=name --format=gnu \
  --owner=0 --group=0 --numeric-owner --mtime="@$SOURCE_DATE_EPOCH" -cf - . |
  gzip -9n >"$made/$name-linux-$(uname -m).tar.gz"

# The checks.
deb="$(echo "$made"/*.deb)"
lintian --fail-on error,warning "$deb"
dpkg-deb -x "$deb" "$work/deb"
diff -r "$work/deb/usr" "$work/tree" || fail "the package and the archive differ."
tests/packaging/InstalledTree.sh "$PWD/build/release"
[[ "$(dpkg-deb -f "$deb" Version)" == "$version" ]] || fail "the package has another version."
[[ "$("$work/tree/bin/oriolemark" --version)" == "oriolemark $version" ]] ||
  fail "the program has another version."
zcat "$work/tree/share/doc/oriolemark/changelog.gz" | head -n 1 | grep -qF "($version)" ||
  fail "the package's changelog has another version."
grep -qF "<release version=\"$version\"" "$work"/tree/share/metainfo/*.xml ||
  fail "the entry for software catalogues has another version."

cd "$made"
sha256sum -- * >"$work/sums"
mv "$work/sums" SHA256SUMS
cat SHA256SUMS
# Only what has passed leaves the working folder.
cp -- * "$folder"
