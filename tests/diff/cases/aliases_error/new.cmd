alias p paint
alias e exit
