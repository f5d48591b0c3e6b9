// The compiler reads the headers that most tests share along with this file.
