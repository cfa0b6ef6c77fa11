// The array and dictionary functions from a language whose own arrays are objects: what it gets
// from the functions are arrays that it reads through VBArray, and what it passes is passed by
// value.
var F = new ActiveXObject("QUENDAL_REPORTS_ASP.FUNCTIONS");
var A = F.ARRAYS;
var dictionary = new ActiveXObject("Scripting.Dictionary");

function text(array) {
  return "[" + new VBArray(array).toArray().join(" ") + "]";
}

function attempt(what, step) {
  try {
    WScript.Echo(what + ": " + step());
  } catch (error) {
    WScript.Echo(what + ": error " + (error.number & 0xFFFF) + ", " + error.description);
  }
}

dictionary.Add("pear", 3);
dictionary.Add("Apple", 2);
dictionary.Add("fig", 10);
var same = F.Dictionaries.Sort(dictionary, true);
WScript.Echo("the same: " + (same.Count == 3));
WScript.Echo("by key: " + text(dictionary.Keys()));
F.Dictionaries.Sort(dictionary, false, true);
WScript.Echo("by item, descending: " + text(dictionary.Keys()) + " " + text(dictionary.Items()));
attempt("no dictionary", function () { return F.Dictionaries.Sort(F, true); });

var keys = dictionary.Keys();
WScript.Echo("bounds: " + A.GetLBound(keys) + " to " + A.GetUBound(keys));
WScript.Echo("slice: " + text(A.Slice(keys, false, -2, 3)));
WScript.Echo("spliced out: " + text(A.Splice(keys, 0, 1, "plum")));
WScript.Echo("popped: " + A.Pop(keys));
WScript.Echo("shifted: " + A.Shift(keys));
A.Push(keys, "plum");
A.Unshift(keys, "plum");
A.Reverse(keys);
WScript.Echo("sorted: " + A.Sort(keys));
WScript.Echo("passed by value: " + text(keys));
attempt("an array of the language", function () { return A.Push([1, 2], 3); });

WScript.Echo("Max: " + F.Max(3, 7, 5) + " " + F.Max(2, "abc") + " " + F.Max(null, 5));
WScript.Echo("Min: " + F.Min(3, 7, 5) + " " + F.Min("b", "B") + " " + F.Min());
var start = new Date().getTime();
F.Sleep(300);
WScript.Echo("slept: " + (new Date().getTime() - start >= 280));
