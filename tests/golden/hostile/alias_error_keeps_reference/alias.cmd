x y nosuch
