kept from an earlier run
