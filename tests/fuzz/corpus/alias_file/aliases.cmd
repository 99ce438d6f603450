# Standard aliases of the command language
alias d draw
alias dr d
alias c draw
alias list erase
alias e erase
alias e erase
x # draw
#comment x y z
  alias self self
alias	l
list

alias ls list
