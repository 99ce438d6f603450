x q&a a<b
x l<b a<b
