// The array and dictionary functions from a language whose own arrays are objects: what it gets
// from the functions are arrays that it reads through VBArray, and what it passes is passed by
// value.
var F = new ActiveXObject("QUENDAL_REPORTS_ASP.FUNCTIONS");
var A = F.ARRAYS;
var dictionary = new ActiveXObject("Scripting.Dictionary");

function text(array) {
  return "[" + new VBArray(array).toArray().join(" ") + "]";
}

dictionary.Add("pear", 3);
dictionary.Add("Apple", 2);
var keys = F.Dictionaries.Sort(dictionary, true).Keys();
A.Push(keys, "plum");
WScript.Echo(A.Sort(keys, -1, -1, true) + " " + A.Pop(keys) + ", by value: " + text(keys));
try {
  A.Push([1, 2], 3);
} catch (error) {
  WScript.Echo((error.number & 0xFFFF) + ", " + error.description);
}
