meta:
  id: registry_value
  title: HKEY_CURRENT_USER\SOFTWARE\TORVA AS\ZEM, value "installation folder"
seq:
  - id: folder
    type: strz
    encoding: UTF-16LE
    doc: Without a backslash at its end. Without the null terminator hosts lose the last character.
