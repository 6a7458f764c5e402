// A separate target for the precompiled headers of the tests.
