// A program is compiled with the headers that the tests then share; it holds none of its own.
