// Gives the precompiled header of the tests a program part to be compiled for.
