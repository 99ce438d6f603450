# Standard aliases of the Orrery command language.
# Each line: the word "alias", the alias, and the command it stands for.
alias del delete
alias rm delete
alias mv rename
alias go run
alias stop pause
alias exit quit
alias q exit
alias look camera
alias ? help
