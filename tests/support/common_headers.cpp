// Source file of the target that builds the tests' precompiled headers.
