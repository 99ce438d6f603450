x a1 draw
draw