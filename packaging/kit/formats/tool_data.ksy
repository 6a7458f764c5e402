meta:
  id: tool_data
  title: Tool data file, temp\tool-<request id>.txt
doc: |
  Written by a host, one record for each operation with its tool. Each record has exactly these 56 pairs in this
  order. Integers are decimal; floating-point numbers have six significant digits; a handle is an address that means
  nothing to the reader. A comment may have bars and equals signs: the last "|PLANEWOFF=" of the line ends it. This
  notation uses the first one, which differs if the comment has that text itself.
seq:
  - id: tools
    type: record
    repeat: eos
types:
  record:
    seq:
      - id: word
        contents: TOOLDATA
      - id: data_id
        type: pair('DATAID')
      - id: tool_plane_name
        type: pair('TPNAME')
        doc: A handle.
      - id: construction_plane_name
        type: pair('CPNAME')
        doc: A handle.
      - id: diameter
        type: pair('DIA')
      - id: number
        type: pair('TNUM')
      - id: type
        type: pair('TTYPE')
      - id: geometry_file
        type: pair('GEOFILE')
        doc: A handle.
      - id: corner_radius
        type: pair('CRAD')
      - id: length_offset
        type: pair('LOFF')
      - id: diameter_offset
        type: pair('DOFF')
      - id: nc_name
        type: pair('NCNAME')
        doc: A handle.
      - id: flutes
        type: pair('FLUTES')
      - id: operation_id
        type: pair('OPID')
      - id: corner_radius_type
        type: pair('RADTYPE')
      - id: material
        type: pair('TLMATERIAL')
      - id: operation_feed
        type: pair('OPFEED')
      - id: table_length_offset
        type: pair('LENGTHOFFSET')
      - id: overall_length
        type: pair('LENGTH OVERALL')
      - id: station
        type: pair('STATION')
      - id: slot
        type: pair('SLOT')
      - id: shoulder_angle
        type: pair('ADSHLDRANGLE')
      - id: additional_diameter
        type: pair('ADDIAM')
      - id: table_geometry_file
        type: pair('GEOFILE')
        doc: A handle.
      - id: operation_place
        type: pair('OPERATION NUMBER')
      - id: tip_angle
        type: pair('TIPANGLE')
      - id: pilot_diameter
        type: pair('PILOTDIA')
      - id: flute_length
        type: pair('FLUTELENGTH')
      - id: shoulder_length
        type: pair('SHLDRLENGTH')
      - id: shoulder_diameter
        type: pair('SHLDRDIAM')
      - id: arbor_diameter
        type: pair('ARBORDIA')
      - id: holder_diameter
        type: pair('HOLDERDIA')
      - id: holder_length
        type: pair('HOLDERLENGTH')
      - id: spindle_speed
        type: pair('RPM')
      - id: feed
        type: pair('FEED')
      - id: plunge_rate
        type: pair('PLUNGE')
      - id: retract_rate
        type: pair('RETRACT')
      - id: group
        type: pair('GROUP')
      - id: machine_group
        type: pair('MACHINEGROUP')
      - id: level
        type: pair('LEVELNUMBER')
      - id: spindle_direction
        type: pair('SPINDLEROT')
      - id: comment
        type: pair('COMMENT')
        doc: |
          Free text up to its first bar, one byte for each character, the low byte of its UTF-16 unit.
      - id: comment_rest
        type: part
        repeat: until
        repeat-until: _.is_work_offset
        doc: The comment from its first bar on, if it has one, and then the pair PLANEWOFF.
      - id: operation_comment
        type: pair('OPERATIONCOMMENT')
      - id: operation_type
        type: pair('OPERATIONTYPE')
      - id: holder
        type: pair('HOLDERNO')
      - id: compensation
        type: pair('COMPENSATIONTYPE')
      - id: depth
        type: pair('DEPTH')
      - id: tool_plane
        type: pair('TPTYPE')
      - id: tool_plane_x
        type: pair('TPX')
      - id: tool_plane_y
        type: pair('TPY')
      - id: tool_plane_z
        type: pair('TPZ')
      - id: construction_plane
        type: pair('CPTYPE')
      - id: construction_plane_x
        type: pair('CPX')
      - id: construction_plane_y
        type: pair('CPY')
      - id: construction_plane_z
        type: pair('CPZ')
      - id: seconds_key
        contents: '|OPTIME='
      - id: seconds
        type: str
        terminator: 0x0d
        encoding: ASCII
        doc: The operation's cycle time.
      - id: line_feed
        contents: [0x0a]
  part:
    seq:
      - id: bar
        contents: '|'
      - id: text
        type: str
        terminator: 0x7c
        consume: false
        encoding: ISO-8859-1
    instances:
      is_work_offset:
        value: text.length >= 10 and text.substring(0, 10) == 'PLANEWOFF='
  pair:
    params:
      - id: name
        type: str
    seq:
      - id: bar
        contents: '|'
      - id: key
        type: str
        terminator: 0x3d
        encoding: ASCII
        valid: name
      - id: value
        type: str
        terminator: 0x7c
        consume: false
        encoding: ISO-8859-1
