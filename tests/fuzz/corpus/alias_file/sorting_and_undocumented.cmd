alias ak a
