alias exit quit
