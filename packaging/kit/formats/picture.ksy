meta:
  id: picture
  title: Screen picture and tool pictures, commit\screendump.bmp and temp\toolimage-<id>.bmp
  endian: le
doc: A Windows bitmap file, not compressed. Rows start at multiples of four bytes, from the bottom up.
seq:
  - id: start
    contents: BM
  - id: bytes
    type: u4
    valid: _io.size
  - id: reserved
    type: u4
  - id: pixels_at
    type: u4
  - id: header_bytes
    type: u4
    valid: 40
  - id: width
    type: s4
  - id: height
    type: s4
  - id: planes
    type: u2
    valid: 1
  - id: bits_per_pixel
    type: u2
  - id: compression
    type: u4
    valid: 0
  - id: pixel_bytes
    type: u4
  - id: unused
    size: 16
  - id: palette
    size: pixels_at - 54
  - id: rows
    size: (width * bits_per_pixel + 31) / 32 * 4
    repeat: expr
    repeat-expr: height
