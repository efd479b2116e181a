#!/usr/bin/env bash
# Writes the corpus of bad and unusual scans that the desktop tests open through the start
# window: make-bad-images.sh OUTDIR [NAME...] writes every file, or only the files named. The
# well-formed oddities are drawn with ImageMagick; the damaged files are cut or patched byte by
# byte, and the PNG decompression bomb is written by hand, so nothing here needs much memory.
#
#   zero-bytes.jpg           an empty file
#   text.jpg                 a text file renamed .jpg
#   truncated-N.jpg          the first N bytes of a good JPEG, for several N
#   truncated-N.tif          the first N bytes of a good TIFF, for several N
#   huge-header.jpg          a small JPEG whose frame header claims 65535 x 65535 pixels, the
#                            most a JPEG can state
#   huge-header.tif          a TIFF whose header claims 100000 x 100000 pixels of 8-bit grey
#                            and that holds the pixels of a few rows only
#   bomb.png                 a PNG of 100000 x 100000 pixels, 1 bit each, whose 7.9 MB of
#                            compressed data inflate to the full 1.25 GB
#   no-frames.gif            a GIF header and screen with no image in it
#   grey16.tif               16 bits per sample grey
#   cmyk.jpg                 a CMYK JPEG
#   palette.gif              a 16-colour palette GIF
#   multipage.tif            a TIFF of two pages
#   exif-rotated.jpg         a 300 x 200 JPEG whose EXIF orientation (6) turns it upright
#                            to 200 x 300
#   huge-screen.gif          a GIF of 4 x 4 pixels on a logical screen of 65535 x 65535,
#                            which a GIF reader allocates whole
#   folder.jpg               a folder
#   fifo.jpg                 a named pipe, which nothing writes to
#   loop.jpg                 a symbolic link to itself: the name is there, the file cannot be
#                            opened
#   dangling.jpg             a symbolic link to a file that does not exist
set -euo pipefail
out=${1:?output folder}
shift
mkdir -p "$out"
cd "$out"

JPEG_CUTS=(2 20 200 400 1200 3000)
TIFF_CUTS=(4 8 100 30000 120000 239990)

# A number as four bytes, most significant first (PNG) or least significant first (TIFF).
# The inner printf writes the escapes, the outer one the bytes.
be32() { printf "$(printf '\\x%02x\\x%02x\\x%02x\\x%02x' $(($1 >> 24 & 255)) \
    $(($1 >> 16 & 255)) $(($1 >> 8 & 255)) $(($1 & 255)))"; }
le32() { printf "$(printf '\\x%02x\\x%02x\\x%02x\\x%02x' $(($1 & 255)) $(($1 >> 8 & 255)) \
    $(($1 >> 16 & 255)) $(($1 >> 24 & 255)))"; }
le16() { printf "$(printf '\\x%02x\\x%02x' $(($1 & 255)) $(($1 >> 8 & 255)))"; }
# The CRC-32 of a file: gzip keeps it in its trailer, and PNG uses the same one.
crc32() { gzip -1 -c < "$1" | tail -c 8 | head -c 4 | od -An -tu4 | tr -d ' \n'; }

# A page-like grey picture to damage: text lines of an index page on paper.
base() {
    [ -f .base.pgm ] || convert -size 600x400 xc:'#f4f0e6' -fill '#202020' \
        -draw 'rectangle 40,40 560,44' -draw 'rectangle 40,80 400,92' \
        -draw 'rectangle 40,120 460,132' -draw 'rectangle 40,160 380,172' \
        -colorspace Gray .base.pgm
}

good_jpeg() { base && convert .base.pgm -quality 85 "$1"; }
# The directory comes first, so that a cut in the pixels leaves it whole.
good_tiff() { base && tail -c 240000 .base.pgm | tiff 600 400 240000 > "$1"; }

# A TIFF entry: tag, type (3 short, 4 long), count 1, value.
entry() { le16 "$1" && le16 "$2" && le32 1 && le32 "$3"; }

# An uncompressed 8-bit grey TIFF with its directory first: width, height, the byte count its
# one strip claims, then the pixels as given on standard input.
tiff() {
    local data=$((8 + 2 + 9 * 12 + 4))
    printf 'II*\0' && le32 8 && le16 9
    entry 256 4 "$1" && entry 257 4 "$2" && entry 258 3 8 && entry 259 3 1
    entry 262 3 1 && entry 273 4 $data && entry 277 3 1 && entry 278 4 "$2"
    entry 279 4 "$3" && le32 0
    cat
}

huge_jpeg() {
    good_jpeg .good.jpg
    # The frame header: FF C0, length, precision, then height and width, two bytes each.
    local sof
    sof=$(LC_ALL=C grep -obUaP '\xff\xc0' .good.jpg | head -1 | cut -d: -f1)
    cp .good.jpg huge-header.jpg
    printf '\xff\xff\xff\xff' | dd of=huge-header.jpg bs=1 seek=$((sof + 5)) conv=notrunc \
        status=none
}

# The deflate stream is one block of fixed codes: a literal 0, then copies of 258 bytes at
# distance 1, each 13 bits long, so that eight of them make the 13 bytes of PATTERN; it opens
# with the byte 0x63 and closes with 0x00 0x00. Eight copies inflate to 2064 bytes.
bomb_png() {
    local width=100000 height=100000
    local rows=$((height * (1 + width / 8)))
    local copies=$(((rows - 1 + 2063) / 2064))
    local inflated=$((1 + 2064 * copies))
    printf '\x18\x05\xa3\x60\x14\x8c\x82\x51\x30\x0a\x46\xc1\x28' > .pattern
    for _ in $(seq 20); do cat .pattern .pattern > .pattern2 && mv .pattern2 .pattern; done
    {
        printf 'IDAT\x78\x01\x63'
        head -c $((13 * copies)) .pattern
        # Adler-32 of zeros: 1, and the count of bytes in the upper half.
        printf '\x00\x00' && be32 $(((inflated % 65521) << 16 | 1))
    } > .idat
    printf 'IHDR' > .ihdr && be32 $width >> .ihdr && be32 $height >> .ihdr
    printf '\x01\x00\x00\x00\x00' >> .ihdr
    {
        printf '\x89PNG\r\n\x1a\n'
        be32 13 && cat .ihdr && be32 "$(crc32 .ihdr)"
        be32 $(($(stat -c %s .idat) - 4)) && cat .idat && be32 "$(crc32 .idat)"
        be32 0 && printf 'IEND\xae\x42\x60\x82'
    } > bomb.png
    rm -f .pattern .idat .ihdr
}

exif_jpeg() {
    good_jpeg .good.jpg
    convert .good.jpg -resize 300x200! .small.jpg
    # An APP1 segment with one EXIF entry, Orientation (274) = 6, right after the SOI marker.
    {
        head -c 2 .small.jpg
        printf '\xff\xe1\x00\x22Exif\0\0II*\0' && le32 8 && le16 1 && entry 274 3 6 && le32 0
        tail -c +3 .small.jpg
    } > exif-rotated.jpg
}

make_one() {
    case "$1" in
    zero-bytes.jpg) : > "$1" ;;
    text.jpg) printf '+INFO,verifier@example.org,,SEQUENCED,BIRTHS\r\n+S,1911,Sep\r\n' > "$1" ;;
    truncated-*.jpg)
        good_jpeg .good.jpg
        local n=${1#truncated-} && head -c "${n%.jpg}" .good.jpg > "$1"
        ;;
    truncated-*.tif)
        good_tiff .good.tif
        local n=${1#truncated-} && head -c "${n%.tif}" .good.tif > "$1"
        ;;
    huge-header.jpg) huge_jpeg ;;
    huge-header.tif) head -c 4000 /dev/zero | tiff 100000 100000 4000 > "$1" ;;
    bomb.png) bomb_png ;;
    no-frames.gif) printf 'GIF89a\x2c\x01\xc8\x00\x00\x00\x00\x3b' > "$1" ;;
    grey16.tif) base && convert .base.pgm -depth 16 "$1" ;;
    cmyk.jpg) base && convert .base.pgm -colorspace CMYK -quality 85 "$1" ;;
    palette.gif) base && convert .base.pgm -fill '#8b4513' -draw 'rectangle 0,300 600,400' \
        -colors 16 -type Palette "$1" ;;
    multipage.tif) base && convert .base.pgm \( .base.pgm -negate \) -depth 8 "$1" ;;
    exif-rotated.jpg) exif_jpeg ;;
    huge-screen.gif)
        # Header, then the logical screen's width and height, two bytes each, lowest first.
        convert -size 4x4 xc:white .small.gif
        { head -c 6 .small.gif && printf '\xff\xff\xff\xff' && tail -c +11 .small.gif; } > "$1"
        rm -f .small.gif
        ;;
    folder.jpg) mkdir -p "$1" ;;
    fifo.jpg) rm -f "$1" && mkfifo "$1" ;;
    loop.jpg) ln -sfn "$1" "$1" ;;
    dangling.jpg) ln -sfn no-such-scan.jpg "$1" ;;
    *)
        echo "make-bad-images.sh: no such file: $1" >&2
        return 1
        ;;
    esac
}

names=("$@")
if [ ${#names[@]} -eq 0 ]; then
    names=(zero-bytes.jpg text.jpg huge-header.jpg huge-header.tif bomb.png no-frames.gif
        grey16.tif cmyk.jpg palette.gif multipage.tif exif-rotated.jpg huge-screen.gif
        folder.jpg fifo.jpg loop.jpg dangling.jpg)
    for n in "${JPEG_CUTS[@]}"; do names+=("truncated-$n.jpg"); done
    for n in "${TIFF_CUTS[@]}"; do names+=("truncated-$n.tif"); done
fi
for name in "${names[@]}"; do make_one "$name"; done
rm -f .base.pgm .good.jpg .good.tif .small.jpg
