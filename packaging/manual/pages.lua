-- Makes one document of several pages, each of which follows a comment with its path. The pages' links to each
-- other lead to places in the document; the text of a link to a page that is not in it stays without the link. Links
-- to other files must lead to files next to the document, in the folder of the metadata "packed".
--
-- What only developers need stays out: the block after the comment `<!-- for developers -->`, and the columns of tables
-- that name code and tests.

local page -- the path of the current page
local packed -- the document's folder
local ids = {} -- of all headings, by path and anchor
local missing = {}
local developersColumns = {code = true, test = true}

local function folderOf(path)
  return path:match("^(.*/)") or ""
end

-- The path that `link` on the page `from` leads to.
local function resolved(from, link)
  local path = folderOf(from) .. link
  return (path:gsub("[^/]+/%.%./", ""))
end

-- As hosts of such pages make them: lower case, without punctuation.
local function anchorOf(heading)
  local text = pandoc.utils.stringify(heading):lower()
  return (text:gsub("[^%w%s_-]", ""):gsub("%s", "-"))
end

local function idOf(path, anchor)
  local name = path:match("([^/]+)%.md$")
  return anchor == "" and name or name .. "--" .. anchor
end

local function startPage(block)
  page = block.text:match("^<!%-%- page (.*) %-%->") or page
end

local function nameHeading(heading)
  local anchor = anchorOf(heading)
  local id = idOf(page, anchor)
  ids[id] = true
  if heading.level == 1 then
    ids[idOf(page, "")] = true
    id = idOf(page, "")
  end
  heading.identifier = id
  return heading
end

local function exists(path)
  local file = io.open(path)
  return file ~= nil and file:close()
end

local function complain(target, problem)
  table.insert(missing, page .. " links to " .. target .. ", which " .. problem)
end

local function leadToHeading(link)
  if link.target:match("^%a+:") then
    return nil
  end
  local path, anchor = link.target:match("^([^#]*)#?(.*)$")
  path = path == "" and page or resolved(page, path)
  if not path:match("%.md$") then
    if not exists(packed .. "/" .. path) then
      complain(link.target, "is not packed")
    end
    link.target = path
    return link
  end
  if not ids[idOf(path, "")] then
    if pandoc.utils.stringify(link.content):match("%.md$") then
      link.content:insert(pandoc.Str(" in the sources"))
    end
    return link.content
  end
  if not ids[idOf(path, anchor)] then
    complain(link.target, "does not exist")
  end
  link.target = "#" .. idOf(path, anchor)
  return link
end

local function findImage(image)
  local path = resolved(page, image.src)
  if not exists(path) then
    complain(image.src, "does not exist")
  end
  image.src = path
  return image
end

local function rowsOf(grid)
  local rows = {table.unpack(grid.head.rows)}
  for _, body in ipairs(grid.bodies) do
    table.move(body.body, 1, #body.body, #rows + 1, rows)
  end
  return rows
end

local function leaveOutColumns(grid)
  local titles = grid.head.rows[1].cells
  for column = #titles, 1, -1 do
    if developersColumns[pandoc.utils.stringify(titles[column].contents)] then
      grid.colspecs:remove(column)
      for _, row in ipairs(rowsOf(grid)) do
        row.cells:remove(column)
      end
    end
  end
  return grid
end

local function withoutDevelopersBlocks(blocks)
  local kept = pandoc.List()
  local isForDevelopers = false
  for _, block in ipairs(blocks) do
    local isMark = block.t == "RawBlock" and block.text:match("^<!%-%- for developers %-%->") ~= nil
    if not isMark and not isForDevelopers then
      kept:insert(block)
    end
    isForDevelopers = isMark
  end
  return kept
end

-- The headings first: a page may link to one that follows.
function Pandoc(document)
  document.blocks = withoutDevelopersBlocks(document.blocks)
  local blocks = document.blocks
  packed = pandoc.utils.stringify(document.meta.packed)
  for place, block in ipairs(blocks) do
    if block.t == "RawBlock" then
      startPage(block)
    elseif block.t == "Header" then
      blocks[place] = nameHeading(block)
    end
  end
  for place, block in ipairs(blocks) do
    if block.t == "RawBlock" then
      startPage(block)
    end
    blocks[place] = pandoc.walk_block(pandoc.Div({block}), {Link = leadToHeading, Image = findImage, Table = leaveOutColumns}).content[1]
  end
  if #missing > 0 then
    error(table.concat(missing, "\n"))
  end
  return document
end
