alias q quit
alias z zoom
