-- Makes one document of several pages, each of which follows a comment with its path. The pages' links to each
-- other lead to places in the document; the text of a link to a page that is not in it stays without the link. Links
-- to other files must lead to files next to the document, in the folder of the metadata "packed".

local page -- the path of the current page
local packed -- the document's folder
local ids = {} -- of all headings, by path and anchor
local missing = {}

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

-- The headings first: a page may link to one that follows.
function Pandoc(document)
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
    blocks[place] = pandoc.walk_block(pandoc.Div({block}), {Link = leadToHeading, Image = findImage}).content[1]
  end
  if #missing > 0 then
    error(table.concat(missing, "\n"))
  end
  return document
end
