# q is gone
