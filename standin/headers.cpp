// A target of its own for the headers that the stand-ins have compiled beforehand.
