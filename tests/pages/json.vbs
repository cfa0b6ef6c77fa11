' JSON and Concat as a VBScript page uses them.
Option Explicit
Dim functions, json, builder, value, dictionary, list(1, 1), text, number, nested, i

Function KeyList(dictionary)
  Dim key
  For Each key In dictionary.Keys
    KeyList = KeyList & "<" & key & ">"
  Next
End Function

Set functions = CreateObject("QUENDAL_REPORTS_ASP.FUNCTIONS")
Set json = functions.JSON
Set builder = functions.Concat
WScript.Echo TypeName(json) & " " & TypeName(builder)

' Decode: objects, arrays and plain values.
Set value = json.Decode("{""a"": [1, 2.5, ""x""], ""b"": null, ""c"": {""d"": true}}")
WScript.Echo value.Count & " " & KeyList(value)
WScript.Echo TypeName(value("a")) & " " & LBound(value("a")) & " " & UBound(value("a"))
For Each nested In value("a")
  WScript.Echo TypeName(nested) & " " & nested
Next
WScript.Echo TypeName(value("b")) & " " & value("c")("d")
text = "  [""\u0041\n"", -0.5e2, false]"
value = json.Decode(text)
WScript.Echo TypeName(value) & " " & UBound(value) & " " & Asc(value(0)) & " " & Len(value(0)) & " " & value(1) & " " & value(2)
WScript.Echo UBound(json.Decode("[]")) & " " & json.Decode("{}").Count & " " & json.Decode("true tail")
value = json.Decode("[xx,12]")
WScript.Echo value(0) & " " & value(1) & " " & json.Decode(7.5)

' Encode: what a page has.
WScript.Echo json.Encode(json.Decode("{""a"": [1, 2.5, ""x""], ""b"": null, ""c"": {""d"": true}}"))
number = 7
WScript.Echo json.Encode(number) & " " & json.Encode(-1.5) & " " & json.Encode(1E+20) & " " & json.Encode(CSng(0.5)) & " " & json.Encode(CCur(2.5))
WScript.Echo json.Encode(Null) & " " & json.Encode(Empty) & " " & json.Encode(True) & " " & json.Encode("a""\/" & vbTab & Chr(1) & vbCrLf)
list(0, 0) = 1
list(1, 0) = "two"
list(0, 1) = Array(3, Array())
WScript.Echo json.Encode(list)
Set dictionary = CreateObject("Scripting.Dictionary")
dictionary.Add "plain", Array(1, 2)
dictionary.Add "a""b", "x"
dictionary.Add 3, dictionary.Count
WScript.Echo json.Encode(dictionary)

' Errors.
On Error Resume Next
For Each text In Array("", "{a:1}", "{""a"" 1}", "{""a"":1 ""b"":2}", """x", """" & vbTab & """", """\x""", "{""a"":1,""a"":2}", "1e400", """\uXYZ0""")
  value = json.Decode(text)
  WScript.Echo Err.Number & " " & Err.Source & ": " & Err.Description
  Err.Clear
Next
For Each value In Array(Nothing, json, builder)
  text = json.Encode(value)
  WScript.Echo Err.Number & " " & Err.Source & ": " & Err.Description
  Err.Clear
Next
dictionary.RemoveAll
dictionary.Add "self", dictionary
text = json.Encode(dictionary)
WScript.Echo Err.Number & " " & Err.Description
Err.Clear
dictionary.RemoveAll
value = json.Decode(Null)
WScript.Echo Err.Number & " " & Err.Description
Err.Clear
On Error GoTo 0

' A thousand levels.
text = String(1000, "[") & String(1000, "]")
value = json.Decode(text)
WScript.Echo (json.Encode(value) = text)
value = Empty

' Concat.
WScript.Echo builder.Length & " " & builder.BufferLength & " [" & builder.Value & "] " & Len(builder.Buffer)
builder.Append "a", 1, True, 2.5
WScript.Echo builder.Value & " " & builder.Length & " " & builder.Text & " " & builder.Text(1) & " " & builder.Text(5)
For i = 0 To 6
  builder.AppendEx "q", i
Next
builder.AppendEx text
WScript.Echo Left(builder.Value, 50)
builder.Value = "abc"
WScript.Echo builder.Value & " " & builder.BufferLength
builder.Prepend "X"
builder.Prepend "Y", 2
builder.Prepend "Z", builder.Length, 3
WScript.Echo builder.Value
builder.Clear
builder.Append "  in the middle  "
builder.TrimToSize
WScript.Echo "[" & builder.Value & "] " & builder.BufferLength
builder.Clear 1000
WScript.Echo builder.Length & " " & builder.BufferLength
On Error Resume Next
builder.Append "kept", Null, "lost"
WScript.Echo Err.Number & " " & Err.Description & " " & builder.Value
Err.Clear
builder.Prepend "x", 99
WScript.Echo Err.Number & " " & Err.Description & " " & builder.Value
Err.Clear
builder.Prepend "x", 32767
WScript.Echo Err.Number & " " & Err.Description
Err.Clear
builder.Clear -1
WScript.Echo Err.Number & " " & Err.Description & " " & builder.BufferLength
Err.Clear
builder.Clear
WScript.Echo builder.BufferLength
