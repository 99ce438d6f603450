x bounce export
