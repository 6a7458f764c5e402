meta:
  id: command_file
  title: Request in a command file, temp\mastercam-<process id of the host>.dat
doc: |
  Written by the Companion into the host's empty command file, with one write of the whole request. At most 65,536
  bytes.
seq:
  - id: request
    type:
      switch-on: beginning == [0x43, 0x48, 0x45, 0x43, 0x4b, 0x49, 0x4e]
      cases:
        true: check_in
        false: open
instances:
  beginning:
    pos: 0
    size: '_io.size < 7 ? _io.size : 7'
types:
  open:
    doc: An open request; without a path, a new-file request.
    seq:
      - id: mark
        size: 3
        doc: EF BB BF. Hosts skip any three bytes.
      - id: id
        type: str
        terminator: 0x20
        encoding: ASCII
        doc: The request id, decimal, 32 bits with a sign.
      - id: path
        type: str
        terminator: 0x0a
        encoding: ASCII
  check_in:
    seq:
      - id: word
        contents: CHECKIN
      - id: comment
        type: str
        size-eos: true
        encoding: ASCII
        doc: A space and the file's name, which hosts ignore.
