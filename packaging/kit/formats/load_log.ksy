meta:
  id: load_log
  title: Debug log of the loads, sys\mcxlog.txt
doc: |
  Hosts append a line for each step of a load. The third line of a file of a CAD system has its kind in place of a
  path.
seq:
  - id: lines
    type: line
    repeat: eos
types:
  line:
    seq:
      - id: word
        contents: 'Loading File #'
      - id: step
        type: str
        terminator: 0x3a
        encoding: ASCII
      - id: space
        contents: ' '
      - id: file
        type: str
        terminator: 0x0d
        encoding: windows-1252
      - id: line_feed
        contents: [0x0a]
