// JSON and Concat from a language whose own arrays and objects are no automation arrays: it reads
// what it gets through VBArray and dictionaries, and encodes what it got.
var F = new ActiveXObject("QUENDAL_REPORTS_ASP.FUNCTIONS");
var json = F.JSON;
var builder = F.Concat;

function attempt(what, step) {
  try {
    WScript.Echo(what + ": " + step());
  } catch (error) {
    WScript.Echo(what + ": error " + (error.number & 0xFFFF) + ", " + error.description);
  }
}

var value = json.Decode('{"name": "J\\u00fcrgen", "sizes": [1, 2.5, -3e2], "none": null, "on": true}');
WScript.Echo(value.Count + " " + new VBArray(value.Keys()).toArray().join(","));
WScript.Echo(new VBArray(value.Item("sizes")).toArray().join(" "));
WScript.Echo(typeof value.Item("name") + " " + value.Item("name").charCodeAt(1) + " " + typeof value.Item("on") + " " + value.Item("none"));
WScript.Echo("as it came: " + (json.Encode(value) == '{"name":"J\u00fcrgen","sizes":[1,2.5,-300],"none":null,"on":true}'));
value.Item("more") = json.Decode('[{"x":[]},{}]');
WScript.Echo(json.Encode(value.Item("more")));
WScript.Echo([json.Encode("a\"b\\c/d\n\u0001"), json.Encode(12), json.Encode(-0.25), json.Encode(false), json.Encode(null)].join(" "));
attempt("no JSON", function () { return json.Decode("nothing"); });
attempt("member", function () { return json.Decode('{"a":1,}'); });
attempt("twice", function () { return json.Decode('{"a":1,"a":2}'); });
attempt("own object", function () { return json.Encode(builder); });

builder.Append("<ul>");
for (var i = 0; i < 3; i++) builder.Append("<li>", i, "</li>");
builder.Append("</ul>");
WScript.Echo(builder.Value + " " + builder.Length + " " + builder.BufferLength);
builder.Value = "b";
builder.Prepend("a");
builder.AppendEx("c", 2);
WScript.Echo(builder.Text(3));
attempt("position", function () { return builder.Prepend("x", 9); });
attempt("null", function () { return builder.Append(null); });
WScript.Echo(builder.Value);
