// A separate target for the stand-ins' precompiled headers.
