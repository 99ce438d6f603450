x a1 draw
lone
