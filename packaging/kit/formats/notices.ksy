meta:
  id: notices
  title: Notices, TCP port 4559
doc: |
  A connection carries one notice of at most 1,023 bytes with its line feed and is then closed; there is no reply.
  This notation also reads several notices in a row.
seq:
  - id: notices
    type: notice
    repeat: eos
types:
  notice:
    seq:
      - id: content
        type:
          switch-on: kind
          cases:
            0x5a: commit
            0x4d: setup_sheet
            0x49: nc_queue
            0x54: tool_data
    instances:
      kind:
        pos: _io.pos
        type: u1
        valid:
          any-of: [0x5a, 0x4d, 0x49, 0x54]
        doc: The first byte. Any other is no notice; every program on the computer can send it.
  commit:
    seq:
      - id: word
        contents: ZEMID=
      - id: id
        type: str
        terminator: 0x7c
        encoding: ASCII
        doc: Decimal, unsigned; 4294967295 for none.
      - id: file
        type: str
        terminator: 0x0a
        encoding: windows-1252
  setup_sheet:
    seq:
      - id: word
        contents: MCAMXMLIMPORTDATAID=
      - id: id
        type: str
        terminator: 0x3b
        encoding: ASCII
      - id: file
        type: str
        terminator: 0x0a
        encoding: windows-1252
  nc_queue:
    seq:
      - id: word
        contents: IMPORTNCQUEUE|
      - id: file
        type: str
        terminator: 0x0a
        encoding: windows-1252
  tool_data:
    seq:
      - id: word
        contents: TOOL-
      - id: id
        type: str
        terminator: 0x0a
        encoding: ASCII
