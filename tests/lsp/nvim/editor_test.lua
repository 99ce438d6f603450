-- Drives quillet-lsp from Neovim's own LSP client, as an author would use it.
-- Run by editor_test.sh: nvim --headless -c "luafile editor_test.lua", with
-- QUILLET_LSP (the server) and DEFINITION (a copy of bodies.def) set.
local failures = 0
local function check(ok, what)
  io.stdout:write((ok and 'ok   ' or 'FAIL ') .. what .. '\n')
  if not ok then failures = failures + 1 end
end

local function request(buf, method, params)
  local answers = vim.lsp.buf_request_sync(buf, method, params, 5000) or {}
  for _, answer in pairs(answers) do
    if answer.result ~= nil then return answer.result end
  end
end

local function at(buf, line, character)
  return { textDocument = vim.lsp.util.make_text_document_params(buf), position = { line = line, character = character } }
end

local function codes(buf)
  local list = {}
  for _, d in ipairs(vim.diagnostic.get(buf)) do table.insert(list, d.lnum .. ':' .. tostring(d.code)) end
  table.sort(list)
  return table.concat(list, ' ')
end

local function waitFor(buf, expected)
  vim.wait(10000, function() return codes(buf) == expected end, 20)
  return codes(buf)
end

local function run()
  vim.cmd('edit ' .. vim.env.DEFINITION)
  local buf = vim.api.nvim_get_current_buf()
  local client = vim.lsp.start_client({ name = 'quillet', cmd = { vim.env.QUILLET_LSP },
                                        root_dir = vim.fn.fnamemodify(vim.env.DEFINITION, ':h') })
  vim.lsp.buf_attach_client(buf, client)

  check(waitFor(buf, '4:extra-argument') == '4:extra-argument', 'diagnostics of the opened file: ' .. codes(buf))

  -- The quick fix of the misspelt directive, applied as the editor applies it.
  local params = { textDocument = vim.lsp.util.make_text_document_params(buf),
                   range = { start = { line = 4, character = 2 }, ['end'] = { line = 4, character = 2 } },
                   context = { diagnostics = vim.lsp.diagnostic.get_line_diagnostics(buf, 4) } }
  local actions = request(buf, 'textDocument/codeAction', params) or {}
  check(#actions == 1 and actions[1].title == 'Replace with KEY_SUMMARY:', 'quick fix offered')
  if actions[1] then vim.lsp.util.apply_workspace_edit(actions[1].edit, 'utf-16') end
  check(vim.api.nvim_buf_get_lines(buf, 4, 5, false)[1] == 'KEY_SUMMARY: Add a body', 'quick fix applied')
  check(waitFor(buf, '') == '', 'no diagnostics after the fix: ' .. codes(buf))

  -- An edited line is checked again without saving.
  vim.api.nvim_buf_set_lines(buf, 6, 7, false, { '    OPT_LOOKUP: Knd' })
  vim.wait(10000, function() return codes(buf):find('6:unknown-lookup-table', 1, true) ~= nil end, 20)
  check(codes(buf):find('6:unknown-lookup-table', 1, true) ~= nil, 'diagnostics after an edit: ' .. codes(buf))
  vim.api.nvim_buf_set_lines(buf, 6, 7, false, { '    OPT_LOOKUP: Kind' })
  check(waitFor(buf, '') == '', 'diagnostics after undoing the edit: ' .. codes(buf))

  local hover = request(buf, 'textDocument/hover', at(buf, 5, 14))
  check(hover and hover.contents.value:find('NQ_INT_TYPE', 1, true) ~= nil, 'hover on an option')

  local definition = request(buf, 'textDocument/definition', at(buf, 6, 18))
  check(definition and definition.range.start.line == 0 and definition.range.start.character == 8,
        'definition of a lookup table')

  local references = at(buf, 0, 9)
  references.context = { includeDeclaration = true }
  check(#(request(buf, 'textDocument/references', references) or {}) == 2, 'references of a lookup table')

  local symbols = request(buf, 'textDocument/documentSymbol', { textDocument = vim.lsp.util.make_text_document_params(buf) }) or {}
  check(#symbols == 2 and symbols[1].name == 'Kind' and symbols[2].name == 'add'
        and symbols[2].children[1].name == 'kind', 'document symbols')

  local items = request(buf, 'textDocument/completion', at(buf, 6, 16)) or {}
  check(#items == 1 and items[1].label == 'Kind', 'completion of a table name')

  vim.lsp.stop_client(client)
end

local ok, error = pcall(run)
if not ok then check(false, 'script error: ' .. tostring(error)) end
io.stdout:flush()
vim.cmd(failures == 0 and 'qall!' or 'cquit 1')
