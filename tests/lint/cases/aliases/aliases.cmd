# Standard aliases.
alias del delete
alias rm  delete  # the same command
alias x   del
alias y   remove
alias z   #quit
alias q   quit    # a trailing comment after a whole group is fine
alias bye quit now
alias end
alias stop
