meta:
  id: nc_queue
  title: NC queue file, temp\ncqueue-<request id>.txt
doc: Written by a host, one entry for each NC program, in the ANSI code page. The Companion deletes it.
seq:
  - id: programs
    type: entry
    repeat: eos
types:
  entry:
    seq:
      - id: word
        contents: NCPATH|
      - id: nc_path
        type: str
        terminator: 0x7c
        encoding: ASCII
        doc: Decimal; from the machine settings, -1 if there were none.
      - id: program
        type: str
        terminator: 0x7c
        encoding: windows-1252
        doc: Its path. A file name has no bar, so the first one ends it.
      - id: group
        type: str
        terminator: 0x0d
        encoding: windows-1252
        doc: The operation's top group; may have bars, may be empty.
      - id: line_feed
        contents: [0x0a]
