# no aliases
