alias q quit
alias p paint
