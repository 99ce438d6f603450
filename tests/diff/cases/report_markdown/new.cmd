alias del delete
alias z zoom
