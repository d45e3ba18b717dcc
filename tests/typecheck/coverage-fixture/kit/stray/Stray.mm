// A file outside every folder the type-checks cover.
