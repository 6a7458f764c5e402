meta:
  id: settings
  title: Settings of the add-in, cfg\settings.ini
doc: |
  One setting in each line; the last line ends in a line feed too. Hosts find a key anywhere in a line, and use the
  last line that has it. Hosts also read lines without a carriage return, which is then missing from the end of
  `value`, and skip lines without a key.
seq:
  - id: lines
    type: line
    repeat: eos
types:
  line:
    seq:
      - id: key
        type: str
        terminator: 0x3d
        encoding: ASCII
      - id: value
        type: str
        terminator: 0x0a
        encoding: ASCII
        doc: Ends in a carriage return.
