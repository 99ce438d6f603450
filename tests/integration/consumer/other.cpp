// Includes nothing generated: changes of the definition never rebuild it.
int otherValue() { return 42; }
