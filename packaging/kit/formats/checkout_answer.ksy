meta:
  id: checkout_answer
  title: Check-out answer, in the user's temporary folder
  endian: le
doc: |
  UTF-16 without a byte-order mark. No host of this release reads it: the check-out command empties the file first.
seq:
  - id: word
    type: u2
    repeat: until
    repeat-until: _ == 0x20
    doc: The characters of CHECKIN, or three letters for the file's type and then its id, decimal; up to a space.
  - id: path
    type: str
    size-eos: true
    encoding: UTF-16LE
    doc: The file to open; after CHECKIN, ignored.
