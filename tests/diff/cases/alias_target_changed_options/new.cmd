alias x fill
