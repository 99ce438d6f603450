x d draw
x D Draw
x e nosuch
