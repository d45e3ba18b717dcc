// A file the type-check covers.
