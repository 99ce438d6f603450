alias q quit
