#!/usr/bin/env bash
# Installs the Debian packages as a user would, runs the demo and every verb with the installed program, looks at what a desktop and
# the shells find, removes the packages and sees that nothing is left.
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

install_quietly() {
    DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "$@" >install.log 2>&1 || { cat install.log >&2; exit 1; }
}

echo "== install"
apt-get update -qq
# what a desktop has, so that it takes notice of ours
install_quietly shared-mime-info desktop-file-utils appstream
install_quietly "$packages"/*.deb
dpkg --verify "${names[@]}"

echo "== demo"
samples=/usr/share/hollerwick/samples
mkdir out
hollerwick-host run "$samples/build_samples.js" "$samples" out
diff -r "$samples/designs/buck_converter" out/unpacked/buck_converter/content
QT_QPA_PLATFORM=offscreen hollerwick-host call _example_browser_2 out/samples.kvexs out/designs --grab out
ls out/*.png

echo "== verbs"
export QT_QPA_PLATFORM=offscreen
mkdir verbs
hollerwick-host pack "$samples/designs/rc_lowpass" --output verbs/rc.kvbdl.zip --title 'RC low-pass'
hollerwick-host barrel verbs --output verbs/all.kvexs
[ "$(hollerwick-host list verbs/all.kvexs)" = "/examples/rc.kvbdl.zip  RC low-pass" ]
hollerwick-host info verbs/rc.kvbdl.zip >/dev/null
hollerwick-host check verbs/rc.kvbdl.zip verbs/all.kvexs
hollerwick-host extract verbs/all.kvexs --example 'RC low-pass' --output verbs/extracted >/dev/null
diff -r "$samples/designs/rc_lowpass" verbs/extracted/content
[ "$(hollerwick-host functions | wc -l)" -eq 23 ]
[ "$(hollerwick-host call _filename a/b.kvsch)" = b.kvsch ]
hollerwick-host console --grab verbs
ls verbs/*.png

echo "== shells"
zcat /usr/share/man/man1/hollerwick-host.1.gz | cmp - <(hollerwick-host generate man)
cmp /usr/share/bash-completion/completions/hollerwick-host <(hollerwick-host generate bash)
cmp /usr/share/zsh/vendor-completions/_hollerwick-host <(hollerwick-host generate zsh)
cmp /usr/share/fish/vendor_completions.d/hollerwick-host.fish <(hollerwick-host generate fish)

echo "== desktop"
grep -q '^60:application/vnd.kelvaris.barrel-of-examples+zip:\*.kvexs$' /usr/share/mime/globs2
desktop-file-validate /usr/share/applications/org.hollerwick.hollerwick*.desktop
grep -q '^application/vnd.kelvaris.barrel-of-examples+zip=org.hollerwick' /usr/share/applications/mimeinfo.cache
appstreamcli validate --no-net /usr/share/metainfo/org.hollerwick.hollerwick.metainfo.xml

echo "== remove"
DEBIAN_FRONTEND=noninteractive apt-get purge -y -qq "${names[@]}" >remove.log 2>&1 || { cat remove.log >&2; exit 1; }
left=$(files_of_ours)
[ -z "$left" ] || { echo "left behind: $left" >&2; exit 1; }
echo "installed, used and removed; nothing is left"
