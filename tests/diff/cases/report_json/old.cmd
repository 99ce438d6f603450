alias d del
