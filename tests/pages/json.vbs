' What only a script host shows of JSON and Concat: its own types, its loops and its errors.
Option Explicit
Dim functions, json, builder, value, dictionary, list(1, 1), text, nested
Set functions = CreateObject("QUENDAL_REPORTS_ASP.FUNCTIONS")
Set json = functions.JSON
Set builder = functions.Concat

text = "{""a"": [1, 2.5, ""x""], ""b"": null, ""c"": {""d"": true}}"
Set value = json.Decode(text)
For Each nested In value
  WScript.Echo nested & " " & IsObject(value(nested))
Next
For Each nested In value("a")
  WScript.Echo TypeName(nested) & " " & nested
Next
WScript.Echo LBound(value("a")) & " " & UBound(value("a")) & " " & UBound(json.Decode("[]")) & " " & value("c")("d")
WScript.Echo json.Encode(value)

list(0, 0) = CSng(0.5)
list(1, 0) = CCur(2.5)
list(0, 1) = Array(3, Array(), 1E+20, Null)
WScript.Echo json.Encode(list)
Set dictionary = CreateObject("Scripting.Dictionary")
dictionary.Add "a""b", Chr(1)
dictionary.Add 3, dictionary.Count
WScript.Echo json.Encode(dictionary)

On Error Resume Next
For Each text In Array("{""a"" 1}", "{""a"":1,""a"":2}")
  value = json.Decode(text)
  WScript.Echo Err.Number & " " & Err.Source & ": " & Err.Description
  Err.Clear
Next
text = json.Encode(builder)
WScript.Echo Err.Number & " " & Err.Source & ": " & Err.Description
Err.Clear
dictionary.Add "self", dictionary
text = json.Encode(dictionary)
WScript.Echo Err.Number & " " & Err.Description
Err.Clear
dictionary.RemoveAll
builder.Append "kept", Null, "lost"
WScript.Echo Err.Number & " " & Err.Description & " " & builder.Value
On Error GoTo 0

text = String(1000, "[") & String(1000, "]")
value = json.Decode(text)
WScript.Echo "a thousand levels: " & (json.Encode(value) = text)
value = Empty

builder.Append 1, True, 2.5
builder.AppendEx "q", 5
builder.Prepend "Y", 2, 1
WScript.Echo builder.Value & " " & builder.Length & " " & builder.BufferLength & " " & builder.Text(3)
