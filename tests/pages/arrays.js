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
dictionary.Add("fig", 10);
WScript.Echo(F.Dictionaries.Sort(dictionary, false, true).Count + " " + text(dictionary.Items()));
var keys = dictionary.Keys();
WScript.Echo(text(A.Slice(keys, false, -2, 3)) + " " + text(A.Splice(keys, 0, 1, "plum")));
A.Push(keys, "plum");
WScript.Echo(A.Sort(keys) + " " + A.Pop(keys) + ", by value: " + text(keys));
try {
  A.Push([1, 2], 3);
} catch (error) {
  WScript.Echo((error.number & 0xFFFF) + ", " + error.description);
}
WScript.Echo(F.Max(3, 7, 5) + " " + F.Max(null, 5) + " " + F.Min());
