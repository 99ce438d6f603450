x a1 draw
draw a2
