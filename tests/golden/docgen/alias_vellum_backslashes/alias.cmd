x wipe delete
