alias x paint
alias x quit
