-- What a page of docs/ needs to become a manual page: tables as lists of terms, links as text,
-- headings in capitals.

local stringify = pandoc.utils.stringify

-- The cells of a row as lists of inlines.
local function cells(row)
  local list = {}
  for _, cell in ipairs(row.cells) do
    list[#list + 1] = pandoc.utils.blocks_to_inlines(cell.contents)
  end
  return list
end

-- A list of terms: the first column; the others are its text, those between with their header.
function Table(table)
  local heads = table.head.rows[1] and cells(table.head.rows[1]) or {}
  local items = {}
  for _, body in ipairs(table.bodies) do
    for _, row in ipairs(body.body) do
      local all = cells(row)
      local text = {}
      for i = 2, #all do
        if i < #all and stringify(all[i]) ~= "" then
          text[#text + 1] = pandoc.Para({pandoc.Str(stringify(heads[i] or {}) .. ":"), pandoc.Space(),
                                         pandoc.Span(all[i])})
        elseif i == #all then
          text[#text + 1] = pandoc.Para(all[i])
        end
      end
      items[#items + 1] = {all[1], {text}}
    end
  end
  return pandoc.DefinitionList(items)
end

function Link(link)
  if link.target:match("^https?://") then
    return nil
  end
  return link.content
end

function Header(header)
  if header.level == 1 then
    header.content = {pandoc.Str(stringify(header.content):upper())}
  end
  return header
end
