meta:
  id: settings
  title: Settings of the add-in, cfg\settings.ini
doc: |
  One setting in each line; the last line ends in a line feed too. Hosts find a key anywhere in a line, and use the
  last line that has it. Hosts also read lines without a carriage return, and skip lines without a key.
seq:
  - id: lines
    type: line
    terminator: 0x0a
    repeat: eos
types:
  line:
    seq:
      - id: key
        type: str
        terminator: 0x3d
        eos-error: false
        encoding: ASCII
        doc: The whole line if it has no equals sign.
      - id: value
        type: str
        size-eos: true
        encoding: ASCII
        doc: Ends in a carriage return.
