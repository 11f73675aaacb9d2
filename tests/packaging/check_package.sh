#!/usr/bin/env bash
# The Debian package as a user gets it: made by CPack from this build tree, unpacked with dpkg-deb
# into a scratch folder and run from there with an environment that names nothing of the build;
# its launchers, price-list type and completion checked, and lintian run over it.
# Usage: check_package.sh BUILD_DIR SOURCE_DIR
set -euo pipefail
build=$1
source=$2
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
fail() {
  echo "FAILED: $*" >&2
  exit 1
}

cpack --config "$build/CPackConfig.cmake" -B "$scratch/out" > "$scratch/cpack.log" 2>&1 ||
  { cat "$scratch/cpack.log"; fail "cpack"; }
deb=$(echo "$scratch"/out/tarnwick_*.deb)
[ -f "$deb" ] || fail "no package in $scratch/out"
version=$(dpkg-deb -f "$deb" Version)
echo "package: $(basename "$deb"), depends: $(dpkg-deb -f "$deb" Depends)"
dpkg-deb -x "$deb" "$scratch/root"
usr=$scratch/root/usr
mkdir -p "$scratch/home"
unpacked() {
  env -i PATH=/usr/bin:/bin HOME="$scratch/home" QT_QPA_PLATFORM=offscreen "$@"
}

# Run paths lead from each file's own folder, never into the build tree.
for file in $(find "$usr/bin" "$usr/lib" -type f); do
  runpath=$(readelf -d "$file" | sed -n 's/.*(\(RPATH\|RUNPATH\)).*\[\(.*\)\]/\2/p')
  [ -z "$runpath" ] || [[ $runpath == '$ORIGIN'* ]] || fail "$file: run path $runpath"
  ! unpacked ldd "$file" | grep -e "$build" -e "not found" || fail "$file: libraries above"
done

for program in tarnwick tarnwick-cad tarnwick-prices tarnwick-calc; do
  [ "$(unpacked "$usr/bin/$program" --version)" = "$program $version" ] || fail "$program --version"
done

examples=("$source/examples/floorplan.dxf" --prices "$source/examples/prices.prc")
expected=$("$build/host/console/tarnwick" bom "${examples[@]}")
[ "$(unpacked "$usr/bin/tarnwick" bom "${examples[@]}")" = "$expected" ] || fail "tarnwick bom"
grep -q "Summary:" <<< "$expected" || fail "no summary in: $expected"

commands=$(unpacked "$usr/bin/tarnwick-cad" --commands)
[ "$commands" = "Group             Global name           Local name  Flags
BlockPrice_Group  BlockPrice_Global     RZBOMT      0
BlockPrice_Group  CalcPrice_Global      RZBOMC      1
BlockPrice_Group  RefreshTables_Global  RZBOMU      0" ] || fail "tarnwick-cad --commands: $commands"

desktop-file-validate "$usr"/share/applications/*.desktop || fail "desktop-file-validate"

# The price-list type takes *.prc from the e-book and Palm types that claim it too.
update-mime-database "$usr/share/mime" 2> /dev/null
grep -qx '60:application/x-tarnwick-price-list:\*.prc' "$usr/share/mime/globs2" ||
  fail "*.prc is not a price list"

# Completion offers the commands and the options the help gives, each option after its commands.
source "$usr/share/bash-completion/completions/tarnwick"
complete_words() {
  COMP_WORDS=("$@")
  COMP_CWORD=$((${#COMP_WORDS[@]} - 1))
  _tarnwick
  echo "${COMPREPLY[*]}"
}
[ "$(complete_words tarnwick b)" = "bom blocks" ] || fail "completion of commands"
help=$("$usr/bin/tarnwick" --help)
commands=$(complete_words tarnwick "" | tr ' ' '\n' | grep -v '^-' | sort | tr '\n' ' ')
[ "$commands" = "$(grep -oE '^  [a-z]+ ' <<< "$help" | sort | tr -d ' ' | tr '\n' ' ')" ] ||
  fail "completion offers the commands $commands"
offered=""
for command in $(complete_words tarnwick ""); do
  [[ $command == -* ]] && continue
  for option in $(complete_words tarnwick "$command" -); do
    grep -q -e "$option\b" <<< "$help" || fail "completion offers $command $option, help has no $option"
    offered+=" $option"
  done
done
for option in $(grep -o -e ' --[a-z-]*' -e ' -o ' <<< "$help" | sort -u); do
  [[ " $offered --help --version " == *" $option "* ]] || fail "help's $option is never completed"
done

lintian_status=0
report=$(lintian --fail-on error "$deb" 2>&1) || lintian_status=$?
report=$(grep -v "running with root" <<< "$report" || true)
echo "lintian: ${report:-no tags}"
[ "$lintian_status" -eq 0 ] || fail "lintian found errors"
echo "ok"
