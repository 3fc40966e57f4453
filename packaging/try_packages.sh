#!/usr/bin/env bash
# Installs the Debian packages as a user would, runs the demo with the installed program, removes them and sees that nothing is left.
#
#     packaging/try_packages.sh build/package/packages
#
# It changes the machine that it runs on, for as long as it runs: give it a fresh one, or a container.
set -euo pipefail

packages=$(cd "${1:?the directory of the packages is needed}" && pwd)
names=(hollerwick-host hollerwick-plugin libkelvariscore1 libkelvaris-dev hollerwick-doc)
[ "$(id -u)" -eq 0 ] || { echo "packages are installed by root" >&2; exit 2; }
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work"

files_of_ours() {
    find /usr /etc /var/lib/dpkg/info -iname '*hollerwick*' -o -iname '*kelvaris*' | sort
}

before=$(files_of_ours)
[ -z "$before" ] || { echo "not a fresh machine: $before" >&2; exit 2; }

echo "== install"
apt-get update -qq
DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "$packages"/*.deb >install.log 2>&1 ||
    { cat install.log >&2; exit 1; }
dpkg --verify "${names[@]}"

echo "== demo"
samples=/usr/share/hollerwick/samples
mkdir out
hollerwick-host run "$samples/build_samples.js" "$samples" out
diff -r "$samples/designs/buck_converter" out/unpacked/buck_converter/content
QT_QPA_PLATFORM=offscreen hollerwick-host call _example_browser_2 out/samples.kvexs out/designs --grab out
ls out/*.png

echo "== media types"
if command -v update-mime-database >/dev/null; then
    grep -q '^60:application/vnd.kelvaris.barrel-of-examples+zip:\*.kvexs$' /usr/share/mime/globs2
fi

echo "== remove"
DEBIAN_FRONTEND=noninteractive apt-get purge -y -qq "${names[@]}" >remove.log 2>&1 || { cat remove.log >&2; exit 1; }
left=$(files_of_ours)
[ -z "$left" ] || { echo "left behind: $left" >&2; exit 1; }
echo "installed, used and removed; nothing is left"
