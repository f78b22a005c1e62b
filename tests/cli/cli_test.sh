#!/bin/bash
# cli_test.sh <moxcc> [sanitizers]: what a user of the program counts on, in files and in pipes.
set -euo pipefail
moxcc=$(realpath "$1")
completion=$(realpath "$(dirname "$0")/../../cli/completion.bash")
sanitizers=${2-}
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
trap 'echo "failed at line $LINENO" >&2' ERR
cd "$folder"

fail() {
    echo "$1" >&2
    exit 1
}
run() { "$moxcc" run -q "$@"; }

# refused <status> <words> <argument ...>: ends so, with one line that has these words, and leaves no file behind.
refused() {
    local status=0 expected=$1 words=$2
    shift 2
    rm -rf out*
    "$moxcc" "$@" >log 2>errors || status=$?
    [ "$status" = "$expected" ] || fail "$*: status $status: $(cat errors)"
    [ "$(wc -l <errors)" = 1 ] || fail "$*: not one line: $(cat errors)"
    grep -q -- "^moxcc: .*$words" errors || fail "$*: $(cat errors)"
    [ -z "$(compgen -G 'out*')" ] || fail "$*: left $(ls out*)"
}

# same <a> <b>
same() { [ "$("$moxcc" compare "$@")" = equal ] || fail "differ: $*"; }

samples() { LC_ALL=C awk -v n="$1" 'BEGIN { x = 7; for (i = 0; i < n; ++i) { x = (x * 75 + 74) % 65537; printf "%c", x % 128 } }'; }

# ---- every format there and back: a twist by the unit matrix changes nothing
unit=1,0,0,0,0,1,0,0,0,0,1,0
{ printf 'P6\n# made up\n5 3\n255\n'; samples 45; } >rgb.ppm
{ printf 'P6\n5 3\n65535\n'; samples 90; } >deep.ppm
{ printf 'P7\nWIDTH 5\nHEIGHT 3\nDEPTH 4\nMAXVAL 255\nTUPLTYPE RGB_ALPHA\nENDHDR\n'; samples 60; } >alpha.pam
for extension in png ppm pnm pam; do
    run ColorTwist32f_8u_C3R rgb.ppm --weights $unit -o a.$extension
    run ColorTwist32f_16u_P3R deep.ppm --weights $unit -o d.$extension
    same rgb.ppm a.$extension
    same deep.ppm d.$extension
done
cmp rgb.ppm <(sed 's/^# made up$//;/^$/d' a.ppm) >/dev/null || same rgb.ppm a.ppm
run ColorTwist32f_8u_AC4R alpha.pam --weights $unit -o alpha.png  # the alpha is the picture's
run ColorTwist32f_8u_AC4R alpha.png --weights $unit -o back.pam
cmp alpha.pam back.pam
{ printf 'PF\n4 2\n-1.0\n'; for _ in {1..24}; do printf '\0\0\200\76'; done; } >quarter.pfm
run ColorTwist_32f_C3R quarter.pfm --weights $unit -o back.pfm
cmp quarter.pfm back.pfm
printf 'P3 2 1 10 10 0 5 # text\n 0 10 10' >text.ppm
printf 'P6 2 1 255\n\377\0\200\0\377\377' >binary.ppm
same text.ppm binary.ppm
{ printf 'P5 8 2 255\n'; samples 8; printf '\377\377\377\377\0\0\0\0'; } >gray.pgm
run ReduceBits_8u1u_C1R gray.pgm -o bits.pbm
run ReduceBits_8u1u_C1R gray.pgm -o bits.png
same bits.pbm bits.png
[ "$(tail -c 1 bits.pbm | od -An -tx1)" = " 0f" ] || fail "black is not 1 in PBM"

# Depths are scaled, and gray becomes RGB.
run GrayToRGB_16u_C1C3R gray.pgm -o deep.png
run ReduceBits_16u8u_C3R deep.png --levels 256 -o out.ppm
run GrayToRGB_8u_C1C3R gray.pgm -o direct.ppm
same out.ppm direct.ppm

# ---- video of odd sizes, by changes of layout that lose nothing
video() { printf 'YUV4MPEG2 W5 H3 F30000:1001 Ip A1:1 C%s XCOLORRANGE=LIMITED\n' "$1"; for _ in 1 2 3; do echo FRAME; samples "$2"; done; }
back() { # <kind> <bytes of a frame> <export>
    video "$1" "$2" >in.y4m
    run "$3" in.y4m --pad -o out.y4m
    cmp <(tail -n +2 in.y4m) <(tail -n +2 out.y4m) || fail "$1 does not come back as it was"
    [ "$(head -n 1 in.y4m | tr ' ' '\n' | sort)" = "$(head -n 1 out.y4m | tr ' ' '\n' | sort)" ] || fail "$1: $(head -n 1 out.y4m)"
    "$moxcc" run -q "$3" - --pad -o - --raw <in.y4m >pipe.raw
    run "$3" in.y4m --pad --raw -o file.raw
    cmp pipe.raw file.raw
    [ "$(run "$3" in.y4m --pad --md5 | cut -d' ' -f1)" = "$(md5sum <file.raw | cut -d' ' -f1)" ] || fail "$1: another sum"
}
for siting in 420 420jpeg 420mpeg2 420paldv; do back $siting 27 YCbCr420_8u_P3P2R; done
back 422 33 YCbCr422_8u_P3C2R
back 411 27 YCbCr411_8u_P3P2R
video 444 45 >444.y4m
run YCbCrToRGB_8u_P3R 444.y4m -o 'frame-%03d.png'
same frame-001.png frame-003.png
run RGBToYCbCr_8u_C3P3R frame-00?.png --rate 24:1 -o out.y4m
grep -aq '^YUV4MPEG2 W5 H3 F24:1 .*C444' out.y4m || fail "$(head -n 1 out.y4m)"
video mono 15 >mono.y4m
run GrayToRGB_8u_C1C3R mono.y4m -o - | cmp - <(run GrayToRGB_8u_C1C3R mono.y4m -o - --threads 3)
run YCbCr420_8u_P3P2R <(video 420 27) --pad --raw -o clip_5x3.nv12
run YCbCr420_8u_P2P3R clip_5x3.nv12 --pad -o out.y4m
same out.y4m <(video 420 27)
"$moxcc" run YCbCr420_8u_P3P2R <(video 420 27) -o odd.raw 2>errors
grep -q 'odd.raw: raw YCbCr420_8u_P2, 5x3: 3 rows of 5 bytes, then 2 rows of 6 bytes' errors || fail "$(cat errors)"
grep -q 'leaves out the last column' errors || fail "$(cat errors)"

# ---- arguments
run CFAToRGB_8u_C1C3R gray.pgm --grid rggb -o whole.ppm
run CFAToRGB_8u_C1C3R gray.pgm --grid rggb --region 2,0,4,2 -o part.ppm
cmp <(tail -c +12 part.ppm | head -c 12) <(tail -c +18 whole.ppm | head -c 12) || fail "a region is no part of the whole"
tr , '\n' <<<$unit >matrix.txt
run ColorTwist32f_8u_C3R rgb.ppm --weights matrix.txt -o a.ppm
same rgb.ppm a.ppm
run YUV420ToRGB_8u_P3AC4R <(video 420 27) --pad -o 'colour-%d.png'  # a fourth channel of 0 is no transparency
[ "$(head -c 26 colour-1.png | tail -c 1 | od -An -tu1)" = "   2" ] || fail "zeros are taken for alpha"
run GrayToRGB_8u_C1C4R gray.pgm -o opaque.pam
[ "$(tail -c 1 opaque.pam | od -An -tu1)" = " 255" ] || fail "not opaque"
run GrayToRGB_8u_C1C3R gray.pgm --time 2>&1 | grep -q 'MPix/s' || fail "no speed"
"$moxcc" list nv12 rgb | head -n 1 | grep -q '^YCbCr420ToRGB_8u_P2C3R  *NV12 -> RGB24' || fail "nv12 to RGB is not found first"
[ "$("$moxcc" list --names | wc -l)" = 439 ] || fail "not every export is listed"
"$moxcc" show RGBToHLS_8u_C3R | grep -q 'const Mox8u\* src, int32_t srcStep' || fail "no prototype"
"$moxcc" compare binary.ppm <(printf 'P6 2 1 255\n\377\0\200\0\377\0') | grep -q 'largest difference 255, 255 and 0, in channel 2 at column 1, row 0' ||
    fail "another place"
"$moxcc" --help | grep -q '^  . moxcc run RGBToGray_8u_C3C1R photo.png' || fail "no examples"
coloured() { grep -q $'\033' <<<"$1"; }
! coloured "$("$moxcc" list nv12)" || fail "colours in a pipe"
coloured "$(script -qec "$moxcc list nv12" /dev/null </dev/null)" || fail "no colours on a terminal"
! coloured "$(NO_COLOR=1 script -qec "$moxcc list nv12" /dev/null </dev/null)" || fail "colours in spite of NO_COLOR"

PATH=$(dirname "$moxcc"):$PATH
. "$completion"
completes() { # <words expected> <word ...>
    local expected=$1
    shift
    COMP_WORDS=(moxcc "$@") COMP_CWORD=$#
    _moxcc
    [ "${COMPREPLY[*]}" = "$expected" ] || fail "$*: completed by ${COMPREPLY[*]}"
}
completes 'run' r
completes 'YCbCr411To420_8u_P3R' run YCbCr411To4
completes '--threads --threshold' run RGBToGray_8u_C3C1R --th
completes 'gbrg grbg' run CFAToRGB_8u_C1C3R --grid g

refused 2 'did you mean RGBToGray_8u_C3C1R' run RGBToGray_8u_C3C1 rgb.ppm -o out.png
refused 2 'did you mean run' rum
refused 2 'did you mean --threads' run RGBToGray_8u_C3C1R rgb.ppm -o out.png --tread 2
refused 2 'takes no --grid' run RGBToGray_8u_C3C1R rgb.ppm -o out.png --grid bggr
refused 2 'none of: bggr' run CFAToRGB_8u_C1C3R gray.pgm -o out.png --grid brgg
refused 2 'needs --weights: 12' run ColorTwist32f_8u_C3R rgb.ppm -o out.png
refused 2 '3 numbers' run ColorTwist32f_8u_C3R rgb.ppm --weights 1,2,3 -o out.png
refused 2 'takes 2 to 256' run ReduceBits_8u_C3R rgb.ppm --levels 257 -o out.png
refused 2 'did you mean NV12' run YCbCr420ToRGB_8u_P2C3R rgb.ppm --size 4x4 --format nv2 -o out.png
refused 2 'is missing' run RGBToGray_8u_C3C1R rgb.ppm
refused 2 'no size' run RGBToGray_8u_C3C1R rgb.ppm --size 4 -o out.png

# ---- bad input
head -c 40 a.png >cut.png
head -c 20 rgb.ppm >cut.ppm
printf 'P6\n2147483648 2147483648\n255\n' >huge.ppm
printf 'P5 2147483647 1 255\n' >wide.pgm
printf 'YUV4MPEG2 W2147483647 H2147483647\nFRAME\n' >huge.y4m
printf 'YUV4MPEG2 W16384 H16384\nFRAME\n' >large.y4m
video 420 27 >full.y4m
head -c 100 full.y4m >cut.y4m
video 420p10 54 >deep.y4m
printf '\211PNG\r\n\032\n\0\0\0\rIHDR\177\377\377\377\177\377\377\377\010\002\0\0\0\0\0\0\0' >huge.png
echo 'A text.' >text.png
: >empty.png
mkdir folder.png
gray='run RGBToGray_8u_C3C1R -o out.png'
refused 1 'missing.png: no such file' $gray missing.png
refused 1 'cut.png: truncated' $gray cut.png
refused 1 'cut.ppm: truncated' $gray cut.ppm
refused 1 'huge.ppm: 2147483648 in the header, out of range' $gray huge.ppm
refused 1 'wide.pgm: too large' $gray wide.pgm
refused 1 'huge.png: ' $gray huge.png
refused 1 'text.png: not a picture' $gray text.png
refused 1 'empty.png: an empty file' $gray empty.png
refused 1 'folder.png: not a regular file' $gray folder.png
refused 1 'rgb.ppm: RGB_8u_C3 where YCbCr420_8u_P3 is wanted' run YCbCr420ToRGB_8u_P3C3R rgb.ppm -o out.png
refused 1 'gray.pgm: .*5x5 or more' run DemosaicAHD_8u_C1C3R gray.pgm -o out.png
refused 1 'does not hold HLS' run RGBToHLS_8u_C3R rgb.ppm -o out.png
refused 1 'no such folder' run RGBToGray_8u_C3C1R rgb.ppm -o nowhere/out.png
refused 1 'holds one picture' run GrayToRGB_8u_C1C3R mono.y4m -o out.png
refused 1 'truncated' run YCbCr420_8u_P3P2R cut.y4m -o out.y4m
refused 1 'huge.y4m: too large' run YCbCr420_8u_P3P2R huge.y4m -o out.y4m
refused 1 'large.y4m: truncated' run YCbCr420_8u_P3P2R large.y4m -o out.y4m
refused 1 '420p10' run YCbCr420_8u_P3P2R deep.y4m -o out.y4m
refused 1 'memory\|truncated' run YCbCr420_8u_P3P2R - -o out.y4m <large.y4m
refused 1 '/dev/full: cannot be written: No space left' run RGBToGray_8u_C3C1R rgb.ppm -o /dev/full
[ -c /dev/full ] || fail "/dev/full is no device any more"
{ printf 'P5 5 3 255\n'; samples 15; } >one.pgm
refused 1 'one.pgm: fewer frames than mono.y4m: 1' compare mono.y4m one.pgm
refused 1 'RGB_8u_C3 of 5x3, and 444.y4m' compare 444.y4m rgb.ppm

set +o pipefail
{ for _ in {1..3000}; do cat rgb.ppm; done | run RGBToGray_8u_C3C1R - -o - 2>errors || echo $? >status; } | head -c 10 >/dev/null
set -o pipefail
[ "$(cat status)" = 1 ] && grep -q 'standard output: cannot be written: Broken pipe' errors || fail "a closed pipe: $(cat errors)"

# A signal takes unfinished files away.
mkfifo slow
"$moxcc" run YCbCr420_8u_P3P2R slow -o out.y4m 2>/dev/null &
process=$!
{ head -c 150 full.y4m; for _ in {1..50}; do compgen -G 'out.y4m.part*' >/dev/null && break; sleep 0.1; done; kill -TERM $process; sleep 0.2; } >slow
status=0
wait $process || status=$?
[ "$status" = 143 ] && [ -z "$(compgen -G 'out.y4m*')" ] || fail "a signal: status $status, left $(ls)"

# ---- long video at constant memory
clip() { for ((i = 0; i < $1; ++i)); do echo FRAME; head -c 460800 /dev/zero; done; }
if [ -z "$sanitizers" ]; then
    { echo YUV4MPEG2 W640 H480; clip 400; } | (ulimit -v 100000; run YCbCr420ToRGB_8u_P3C3R - -o - | tail -c 100 >/dev/null) ||
        fail "video takes more memory the longer it is"
fi

# ---- ffmpeg both ways
if command -v ffmpeg >/dev/null; then
    source=(ffmpeg -v error -f lavfi -i testsrc=size=66x50:duration=1:rate=10)
    "${source[@]}" -pix_fmt yuv420p -f yuv4mpegpipe clip.y4m
    cat clip.y4m | run YCbCr420_8u_P3P2R - -o - --raw | md5sum >ours
    ffmpeg -v error -i clip.y4m -pix_fmt nv12 -f rawvideo - | md5sum >theirs
    cmp ours theirs || fail "NV12 is not what ffmpeg takes for it"
    "${source[@]}" -pix_fmt rgb24 -f rawvideo - |
        run RGBToYCbCr422_8u_C3P3R - --size 66x50 --rate 10:1 -o - | ffmpeg -v error -i - -f null -c copy - ||
        fail "ffmpeg does not read what is written"
    "${source[@]}" -pix_fmt rgba -f image2pipe -c:v pam - | run ColorTwist32f_8u_AC4R - --weights $unit -o - |
        ffmpeg -v error -f image2pipe -c:v pam -i - -f rawvideo -pix_fmt rgba - | md5sum >ours
    "${source[@]}" -pix_fmt rgba -f rawvideo - | md5sum >theirs
    cmp ours theirs || fail "pictures with alpha do not come back through ffmpeg"
else
    echo "ffmpeg is not installed: its pipes were not tried"
fi
echo "all is well"
