alias p paint
alias q quit
