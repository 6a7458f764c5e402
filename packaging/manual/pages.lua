-- Makes one document of several pages, each of which follows a comment with its path. The pages' links to each
-- other lead to places in the document; the text of a link to a page that is not in it stays without the link.

local page -- the path of the current page
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

local function leadToHeading(link)
  if link.target:match("^%a+:") then
    return nil
  end
  local path, anchor = link.target:match("^([^#]*)#?(.*)$")
  path = path == "" and page or resolved(page, path)
  if not path:match("%.md$") then
    link.target = path -- a file next to the manual
    return link
  end
  if not ids[idOf(path, "")] then
    return link.content
  end
  if not ids[idOf(path, anchor)] then
    table.insert(missing, page .. " links to " .. link.target .. ", which does not exist")
  end
  link.target = "#" .. idOf(path, anchor)
  return link
end

local function findImage(image)
  image.src = resolved(page, image.src)
  return image
end

-- The headings first: a page may link to one that follows.
function Pandoc(document)
  local blocks = document.blocks
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
