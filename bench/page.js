// JSON on a page, against eval and against an encoder in script. Prints rows "name|ours|peer" in
// milliseconds.
var ROUNDS = 3;

function best(work) {
  var least = 1e9;
  for (var round = 0; round < ROUNDS; ++round) {
    var start = new Date().getTime();
    work();
    least = Math.min(least, new Date().getTime() - start);
  }
  return least;
}

function compare(name, ours, peer) {
  WScript.Echo(name + "|" + best(ours) + "|" + best(peer));
}

function quoted(text) {
  return '"' + text.replace(/[\\"]/g, "\\$&").replace(/\n/g, "\\n").replace(/\r/g, "\\r") + '"';
}

function encoded(value) {
  var parts = [];
  if (value === null) return "null";
  if (typeof value == "string") return quoted(value);
  if (typeof value != "object") return String(value);
  if (value instanceof Array) {
    for (var i = 0; i < value.length; ++i) parts.push(encoded(value[i]));
    return "[" + parts.join(",") + "]";
  }
  for (var key in value) parts.push(quoted(key) + ":" + encoded(value[key]));
  return "{" + parts.join(",") + "}";
}

var orders = [];
for (var i = 0; i < 2000; ++i)
  orders.push({ id: i, customer: "customer \"" + i + "\"", paid: i % 2 == 0, note: null,
                lines: [i * 1.25, i % 7, "a line of the order"] });
var text = encoded(orders);

var json = new ActiveXObject("QUENDAL_REPORTS_ASP.FUNCTIONS").JSON;
var size = Math.round(text.length / 1000) + ",000 characters";
compare("decode " + size + ", ms (eval)", function () { json.Decode(text); },
        function () { eval("(" + text + ")"); });
var decoded = json.Decode(text);
compare("encode " + size + ", ms (script)", function () { json.Encode(decoded); },
        function () { encoded(orders); });
