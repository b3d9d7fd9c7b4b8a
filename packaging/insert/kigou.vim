" Inserts what is picked in the browser of kigou, in Vim in a terminal and in Neovim. To be
" sourced in the vimrc or init.vim.
"
" :Kigou puts it behind the cursor, as p does. So does Ctrl+K Ctrl+K in insert mode, where the
" cursor is: Ctrl+K begins digraphs, and there is none of it. g:kigou_key, set before, is another
" key; an empty one is none.

" Puts text into the line of the cursor, before a byte of it, and the cursor on its last character.
function! s:Insert(text, at) abort
  let l:text = iconv(a:text, 'utf-8', &encoding)
  let l:line = getline('.')
  call setline('.', strpart(l:line, 0, a:at) . l:text . strpart(l:line, a:at))
  call cursor(0, a:at + strlen(l:text) + 1 - strlen(matchstr(l:text, '.$')))
endfunction

function! s:BehindCursor() abort
  return col('.') - 1 + strlen(matchstr(getline('.'), '.', col('.') - 1))
endfunction

" The lines of a file, which is gone then, with something between.
function! s:Take(file, between) abort
  let l:lines = filereadable(a:file) ? readfile(a:file) : []
  call delete(a:file)
  return join(l:lines, a:between)
endfunction

" What kigou had to say besides.
function! s:Tell(errors) abort
  let l:said = s:Take(a:errors, ' ')
  if !empty(l:said)
    echohl WarningMsg | echomsg l:said | echohl None
  endif
endfunction

function! s:Command(file, errors) abort
  return 'kigou --pick-to ' . shellescape(a:file) . ' 2>' . shellescape(a:errors)
endfunction

if has('nvim')
  " Its :! has no terminal, so the browser gets one of its own in a new tab.
  function! s:Start(at, inserting) abort
    let l:state = {'file': tempname(), 'errors': tempname(), 'at': a:at,
          \ 'inserting': a:inserting, 'window': win_getid(), 'on_exit': function('s:Ended')}
    tabnew
    setlocal bufhidden=wipe
    call termopen(s:Command(l:state.file, l:state.errors), l:state)
    startinsert
  endfunction

  function! s:Ended(job, status, event) dict abort
    tabclose
    stopinsert
    call timer_start(0, {-> s:Finish(self)})
  endfunction

  " Keys, and what is told, are lost while the mode of the terminal lasts.
  function! s:Finish(state) abort
    if mode() !=# 'n'
      call timer_start(10, {-> s:Finish(a:state)})
      return
    endif
    let l:picks = s:Take(a:state.file, '')
    if win_gotoid(a:state.window) && !empty(l:picks)
      call s:Insert(l:picks, a:state.at)
    endif
    call s:Tell(a:state.errors)
    if a:state.inserting
      let l:at = a:state.at + strlen(l:picks)
      call cursor(0, max([l:at, 1]))
      call feedkeys(l:at > 0 ? 'a' : 'i', 'n')
    endif
  endfunction

  command! Kigou call s:Start(s:BehindCursor(), 0)
  " A terminal takes keys only when insert mode was left before.
  inoremap <silent> <Plug>(kigou) <Esc><Cmd>call <SID>Start(col("'^") - 1, 1)<CR>
else
  function! s:Pick() abort
    let [l:file, l:errors] = [tempname(), tempname()]
    silent execute '!' . escape(s:Command(l:file, l:errors), '!%#')
    redraw!
    call s:Tell(l:errors)
    return s:Take(l:file, '')
  endfunction

  function! s:Put(picks) abort
    if !empty(a:picks)
      call s:Insert(a:picks, s:BehindCursor())
    endif
  endfunction

  command! Kigou call s:Put(s:Pick())
  inoremap <silent> <Plug>(kigou) <C-R><C-R>=iconv(<SID>Pick(), 'utf-8', &encoding)<CR>
endif

let s:key = get(g:, 'kigou_key', '<C-K><C-K>')
if !empty(s:key)
  execute 'imap' s:key '<Plug>(kigou)'
endif
