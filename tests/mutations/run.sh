#!/usr/bin/env bash
# Puts each deliberate fault of this folder into a clean copy of the committed tree, builds
# it and runs the tests: a fault is caught when at least one test fails.
#
#   tests/mutations/run.sh [NN-name.patch ...]     (default: every patch here)
#
# The copy is a clone of the repository at HEAD, or at $MUTATION_REV when set (uncommitted
# changes are not part of it), in
# $MUTATION_DIR (default build/mutation), built once as a plain Debug build without
# sanitizers and then incrementally: the tree is reset after every fault. Tests of the layers
# a patch touches run first and settle "caught" quickly; a fault they miss is only counted as
# missed after the whole suite has passed with it.
set -euo pipefail

here=$(cd "$(dirname "$0")" && pwd)
root=$(git -C "$here" rev-parse --show-toplevel)
work=${MUTATION_DIR:-$root/build/mutation}
tree=$work/tree
build=$work/build
jobs=${JOBS:-2}
results=$work/results.txt
log=$work/log
mkdir -p "$work" "$log"

if [ $# -gt 0 ]; then
    patches=()
    for p in "$@"; do patches+=("$here/$(basename "$p")"); done
else
    patches=("$here"/*.patch)
fi

if [ -n "$(git -C "$root" status --porcelain -- src tests CMakeLists.txt)" ]; then
    echo "note: uncommitted changes in src or tests are not part of this run" >&2
fi

# The clean copy, at the commit checked out in the repository.
commit=$(git -C "$root" rev-parse "${MUTATION_REV:-HEAD}^{commit}")
[ -d "$tree/.git" ] || git clone -q --no-checkout "$root" "$tree"
git -C "$tree" fetch -q "$root" "$commit"
git -C "$tree" checkout -q --detach FETCH_HEAD
git -C "$tree" reset -q --hard
git -C "$tree" clean -qfd
[ "$(git -C "$tree" rev-parse HEAD)" = "$commit" ] || { echo "copy is not at $commit" >&2; exit 1; }

[ -f "$build/build.ninja" ] ||
    # No debug information and the lld linker: a fault relinks every test program.
    cmake -S "$tree" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Debug -DCMAKE_CXX_FLAGS_DEBUG=-O0 \
        -DCMAKE_EXE_LINKER_FLAGS=-fuse-ld=lld -DCMAKE_SHARED_LINKER_FLAGS=-fuse-ld=lld \
        -DHUSHPANE_SANITIZE=OFF -DHUSHPANE_TESTS=ON > "$log/configure.txt"

build_all() { cmake --build "$build" -j "$jobs" > "$1" 2>&1; }
run_tests() { # extra ctest arguments...
    (cd "$build" && ctest -j "$jobs" --stop-on-failure --timeout 120 "$@")
}
failed_tests() { # ctest log
    sed -n 's/^[[:space:]]*[0-9]* - \(.*\) (.*)$/\1/p' "$1" | head -3 | paste -sd' ' -
}

# Test programs (ctest labels) that exercise a source folder most directly.
labels_for() { # patch
    local labels=()
    while read -r file; do
        case "$file" in
        src/engine/export/*) labels+=(export_tests) ;;
        src/engine/interchange/*) labels+=(interchange_tests) ;;
        src/engine/media/*) labels+=(engine_media_tests export_tests) ;;
        src/engine/*) labels+=(engine_tests engine_media_tests) ;;
        src/services/*) labels+=(services_tests) ;;
        src/document/*) labels+=(document_tests prefs_tests) ;;
        src/batch/*) labels+=(batch_tests) ;;
        src/app/*) labels+=(app_tests) ;;
        src/ui/*) labels+=(ui_tests) ;;
        esac
    done < <(sed -n 's|^+++ b/||p' "$1")
    printf '%s\n' "${labels[@]}" | sort -u
}

echo "baseline at ${commit:0:12}: building and running the whole suite"
build_all "$log/baseline-build.txt" || { echo "baseline does not build" >&2; exit 1; }
if ! run_tests --output-on-failure > "$log/baseline-tests.txt" 2>&1; then
    echo "baseline fails; see $log/baseline-tests.txt" >&2
    exit 1
fi

: > "$results"
caught=0
missed=()
broken=()
for patch in "${patches[@]}"; do
    name=$(basename "$patch" .patch)
    git -C "$tree" reset -q --hard
    if ! git -C "$tree" apply "$patch"; then
        broken+=("$name (does not apply)")
        echo "$name does-not-apply" >> "$results"
        continue
    fi
    mapfile -t labels < <(labels_for "$patch")
    if ! build_all "$log/$name-build.txt"; then
        broken+=("$name (does not build)")
        echo "$name does-not-build" >> "$results"
        continue
    fi
    verdict=missed
    by=
    if [ ${#labels[@]} -gt 0 ] &&
        ! run_tests -L "^($(IFS='|'; echo "${labels[*]}"))\$" > "$log/$name-near.txt" 2>&1; then
        verdict=caught
        by=$(failed_tests "$log/$name-near.txt")
    elif ! run_tests > "$log/$name-all.txt" 2>&1; then
        verdict=caught
        by=$(failed_tests "$log/$name-all.txt")
    fi
    echo "$name $verdict $by" | tee -a "$results"
    if [ $verdict = caught ]; then caught=$((caught + 1)); else missed+=("$name"); fi
done
git -C "$tree" reset -q --hard

echo
echo "caught ${caught} of ${#patches[@]} at ${commit:0:12}"
if [ ${#missed[@]} -gt 0 ]; then
    echo "missed:"
    printf '  %s\n' "${missed[@]}"
fi
if [ ${#broken[@]} -gt 0 ]; then
    echo "not run:"
    printf '  %s\n' "${broken[@]}"
fi
