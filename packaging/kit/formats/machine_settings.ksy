meta:
  id: machine_settings
  title: Machine settings, temp\mcsettings-<request id>.txt
doc: |
  One line, written by the Companion before the open request with this id, read and deleted by the load. Hosts take
  each byte of the texts for the character of this number.
seq:
  - id: id
    type: str
    terminator: 0x7c
    encoding: ASCII
    doc: The request id, which hosts do not look at.
  - id: nc_path
    type: str
    terminator: 0x7c
    encoding: ASCII
    doc: Decimal; part of each entry of the NC queue.
  - id: second_number
    type: str
    terminator: 0x7c
    encoding: ASCII
  - id: machine
    type: str
    terminator: 0x0a
    encoding: ISO-8859-1
    doc: The path of the machine definition. Ends in a carriage return; hosts also read a line without it.
