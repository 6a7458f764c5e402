meta:
  id: commit_records
  title: Commit file, temp\torvapdm-<process id of the Companion>.dat
  endian: le
doc: |
  Appended by hosts, one record for each commit. A record whose end is not there yet is being written: read it
  again later.
seq:
  - id: records
    type: record
    repeat: eos
types:
  record:
    seq:
      - id: id
        type: u4
        doc: The host's current ZEM id; 4294967295 for none.
      - id: units
        type: u4
        valid:
          max: 32767
      - id: file
        type: str
        size: units * 2
        encoding: UTF-16LE
