# Standard aliases
alias p paint
alias q quit
