#!/usr/bin/env bash
# The store's job as a whole program: cadhost opens a survey drawing, runs ViraCoordDef over the whole model
# space (the example scripts' control points: two pairs for the plain survey drawings, three pairs with
# scale for the site survey) and saves it. Beside each job the bare tag pass (bench_dxf_tag_pass: read every
# tag, shift every coordinate, write every tag) runs on the same file. Each is measured with /usr/bin/time
# (wall, processor time user+sys, peak resident memory) in RUNS fresh processes; the best and the median are
# printed, with the time per entity, the job per bare pass, the peak memory per file size, and how time and
# memory grow from the smallest drawing to the largest.
#
# Every output is read back by the store (bench_dxf_count) and must hold the input's number of model-space
# entities; the transcript must report every entity transformed; the site survey's output is also read and
# audited by ezdxf. A broken output fails the script.
#
# usage: bench/dxf/job.sh [BUILD_DIR]          (default build/release)
#   RUNS=3                   runs per measurement
#   SIZES="200000 2000000"   entity counts of the plain survey drawings (make_survey.py)
#   SITE=1                   also the site survey drawing (make_site_survey.py); SITE=0 leaves it out
# Build first: cmake --preset release && cmake --build --preset release --target cadhost ViraCadtoolsV10 \
#   bench_dxf_tag_pass bench_dxf_count
set -euo pipefail
cd "$(dirname "$0")/../.."
src="$PWD"
build="$(cd "${1:-build/release}" && pwd)"
runs="${RUNS:-3}"
sizes="${SIZES:-200000 2000000}"
python="${VIRA_PYTHON:-/usr/bin/python3}"
work="$build/bench/dxf"
mkdir -p "$work/job"
for tool in cadhost ViraCadtoolsV10.so bench/dxf/bench_dxf_tag_pass bench/dxf/bench_dxf_count; do
  [ -e "$build/$tool" ] || { echo "job.sh: $build/$tool is missing; build it first (see the head of job.sh)" >&2; exit 1; }
done

# The module's update check goes to a closed port on this machine; its settings and protocol stay here.
export XDG_CONFIG_HOME="$work/job/config" XDG_STATE_HOME="$work/job/state"
mkdir -p "$XDG_CONFIG_HOME/TRELLANOVA 10"
printf '[Platform]\nUpdateServer=127.0.0.1:9\n' > "$XDG_CONFIG_HOME/TRELLANOVA 10/registry.ini"

drawing() {  # drawing NAME GENERATOR ARGS...: writes it once into the build tree
  local file="$work/$1.dxf"; shift
  if [ ! -f "$file" ]; then
    echo "writing $file ..." >&2
    "$python" "$src/bench/dxf/$1" "$file.new" "${@:2}"
    mv "$file.new" "$file"
  fi
  echo "$file"
}

count() {  # the model-space entities the store reads from a file
  "$build/bench/dxf/bench_dxf_count" "$1" || { echo "job.sh: $1 does not read back" >&2; exit 1; }
}

# measure LABEL COMMAND...: RUNS runs; appends "wall cpu maxrss_kib" lines to $work/job/LABEL.times
measure() {
  local label="$1"; shift
  : > "$work/job/$label.times"
  for _ in $(seq "$runs"); do
    /usr/bin/time -f "%e %U %S %M" -o "$work/job/time.out" nice "$@" > "$work/job/$label.log" 2>&1 \
      || { echo "job.sh: $label failed:" >&2; tail -5 "$work/job/$label.log" >&2; exit 1; }
    awk '{ printf "%s %.2f %s\n", $1, $2 + $3, $4 }' "$work/job/time.out" >> "$work/job/$label.times"
  done
}

# pick LABEL COLUMN best|median
pick() {
  sort -g -k"$2" "$work/job/$1.times" | awk -v c="$2" -v what="$3" '{ v[NR] = $c }
    END { if (what == "best") print v[1]; else if (NR % 2) print v[(NR + 1) / 2]; else print (v[NR / 2] + v[NR / 2 + 1]) / 2 }'
}

report() {  # report NAME FILE ENTITIES
  local name="$1" file="$2" n="$3" mib
  mib=$(awk -v b="$(stat -c %s "$file")" 'BEGIN { printf "%.1f", b / 1048576 }')
  awk -v name="$name" -v n="$n" -v mib="$mib" \
    -v jw="$(pick "$name-job" 1 best)" -v jwm="$(pick "$name-job" 1 median)" \
    -v jc="$(pick "$name-job" 2 best)" -v jcm="$(pick "$name-job" 2 median)" -v jm="$(pick "$name-job" 3 best)" \
    -v bw="$(pick "$name-bare" 1 best)" -v bwm="$(pick "$name-bare" 1 median)" \
    -v bc="$(pick "$name-bare" 2 best)" -v bcm="$(pick "$name-bare" 2 median)" -v bm="$(pick "$name-bare" 3 best)" \
    'BEGIN {
      printf "%s: %d entities, %s MiB, %d runs each (best / median)\n", name, n, mib, '"$runs"'
      f = "  %-13s wall %6.2f / %6.2f s  cpu %6.2f / %6.2f s  per entity %5.2f us wall, %5.2f us cpu  peak %6.0f MiB = %.2f x file\n"
      printf f, "cadhost job", jw, jwm, jc, jcm, jw * 1e6 / n, jc * 1e6 / n, jm / 1024, jm / 1024 / mib
      printf f, "bare tag pass", bw, bwm, bc, bcm, bw * 1e6 / n, bc * 1e6 / n, bm / 1024, bm / 1024 / mib
      printf "  job / bare pass: wall %.2f, cpu %.2f\n", (bw > 0 ? jw / bw : 0), (bc > 0 ? jc / bc : 0)
    }'
}

job() {  # job NAME FILE SCRIPT
  local name="$1" file="$2" script="$3" n out="$work/job/$1-out.dxf" done
  n=$(count "$file")
  measure "$name-job" "$build/cadhost" "$file" --headless --script "$script" --save "$out" \
    --module "$build/ViraCadtoolsV10.so"
  done=$(grep -o '[0-9]* Zeichenelemente transformiert' "$work/job/$name-job.log" | tail -1 | cut -d' ' -f1)
  [ "$done" = "$n" ] || { echo "job.sh: $name: ${done:-no} entities transformed of $n" >&2; exit 1; }
  [ "$(count "$out")" = "$n" ] || { echo "job.sh: $name: the saved drawing lost entities" >&2; exit 1; }
  measure "$name-bare" "$build/bench/dxf/bench_dxf_tag_pass" "$file" "$work/job/$name-tags-out.dxf"
  [ "$(count "$work/job/$name-tags-out.dxf")" = "$n" ] || { echo "job.sh: $name: the bare pass lost entities" >&2; exit 1; }
  report "$name" "$file" "$n"
  echo "$n" > "$work/job/$name.entities"
}

names=()
for size in $sizes; do
  job "survey-$size" "$(drawing "survey-$size" make_survey.py "$size")" "$src/examples/two-pairs.txt"
  names+=("survey-$size")
done

# How the job grows with the drawing: the largest plain drawing against the smallest.
if [ "${#names[@]}" -ge 2 ]; then
  small="${names[0]}" large="${names[-1]}"
  awk -v s="$small" -v l="$large" -v ns="$(cat "$work/job/$small.entities")" -v nl="$(cat "$work/job/$large.entities")" \
    -v tws="$(pick "$small-job" 1 best)" -v twl="$(pick "$large-job" 1 best)" \
    -v tcs="$(pick "$small-job" 2 best)" -v tcl="$(pick "$large-job" 2 best)" \
    -v ms="$(pick "$small-job" 3 best)" -v ml="$(pick "$large-job" 3 best)" \
    -v bws="$(pick "$small-bare" 1 best)" -v bwl="$(pick "$large-bare" 1 best)" \
    -v bcs="$(pick "$small-bare" 2 best)" -v bcl="$(pick "$large-bare" 2 best)" \
    'BEGIN {
      printf "growth %s / %s (%.1fx the entities, best runs):\n", l, s, nl / ns
      printf "  cadhost job wall %.2fx, cpu %.2fx, peak memory %.2fx; bare pass wall %.2fx, cpu %.2fx\n",
             twl / tws, tcl / tcs, ml / ms, bwl / bws, bcl / bcs
    }'
fi

if [ "${SITE:-1}" != 0 ]; then
  site="$(drawing SiteSurvey make_site_survey.py)"
  job site-survey "$site" "$src/examples/three-pairs.txt"
  "$python" - "$work/job/site-survey-out.dxf" <<'PY' || { echo "job.sh: ezdxf cannot read the site survey's output" >&2; exit 1; }
import sys
import ezdxf
doc = ezdxf.readfile(sys.argv[1])
errors = doc.audit().errors
if errors:
    sys.exit(f"ezdxf's audit: {len(errors)} errors, the first: {errors[0].message}")
print(f"  ezdxf reads the output: {len(doc.modelspace())} model-space entities, no audit errors")
PY
fi
