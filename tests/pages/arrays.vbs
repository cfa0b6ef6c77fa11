' What only a script host shows of the functions: its own arrays, dynamic, fixed and in one another,
' the loops over them, and what its stack lets nest.
Option Explicit
Dim F, A, J, dynamic(), fixed(2), sized, element, dictionary, text
Set F = CreateObject("QUENDAL_REPORTS_ASP.FUNCTIONS")
Set A = F.ARRAYS
Set J = F.JSON
Set dictionary = CreateObject("Scripting.Dictionary")

A.Push dynamic, Array(3, "three")
A.Push dynamic, F.Concat
WScript.Echo TypeName(A.Pop(dynamic)) & " " & J.Encode(dynamic) & ", then none: " & A.GetUBound(A.Shift(dynamic)) & " " & TypeName(A.GetUBound(dynamic))
sized = Array(Array(1, 2), 3)
A.Push sized(0), 9
A.Push sized, sized
WScript.Echo J.Encode(sized)
sized = Array(1, 2)
For Each element In sized
  A.Push sized, 3
Next
WScript.Echo "locked by a loop: " & J.Encode(sized)

fixed(0) = "a"
A.Push fixed, "d"
A.Unshift fixed, "x"
WScript.Echo "fixed: " & J.Encode(fixed)
On Error Resume Next
A.Shift fixed
WScript.Echo Err.Number & ", " & Err.Source & ", " & Err.Description
Err.Clear
dictionary.Add "self", dictionary
text = J.Encode(dictionary)
WScript.Echo Err.Number & " " & Err.Description
On Error GoTo 0
dictionary.RemoveAll
text = String(1000, "[") & String(1000, "]")
WScript.Echo "a thousand levels: " & (J.Encode(J.Decode(text)) = text)
