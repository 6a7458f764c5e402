// A target of its own for the headers that the tests have compiled beforehand.
