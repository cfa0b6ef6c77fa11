' What only a script host shows of the array and dictionary functions: its own arrays, dynamic, fixed,
' in variables and in one another, and the loops over them.
Option Explicit
Dim F, A, J, dynamic(), fixed(2), sized, element, dictionary, sorted, start
Set F = CreateObject("QUENDAL_REPORTS_ASP.FUNCTIONS")
Set A = F.ARRAYS
Set J = F.JSON

Sub ShowError(what)
  WScript.Echo what & ": " & Err.Number & ", " & Err.Source & ", " & Err.Description
  Err.Clear
End Sub

WScript.Echo A.GetUBound(dynamic) & " " & TypeName(A.GetUBound(dynamic)) & ", " & A.GetUBound(fixed) & " " & TypeName(A.GetUBound(fixed))
A.Push dynamic, 1
A.Push dynamic, Array(3, "three")
A.Push dynamic, F.Concat
WScript.Echo UBound(dynamic) & " " & TypeName(dynamic(2)) & " " & TypeName(A.Pop(dynamic)) & " " & J.Encode(dynamic)
WScript.Echo A.Shift(dynamic) & ", then none: " & A.GetUBound(A.Shift(dynamic)) & " " & A.GetUBound(dynamic)
A.Push dynamic, "again"
WScript.Echo J.Encode(dynamic)

sized = Array(Array(1, 2), 3)
A.Push sized(0), 9
A.Push sized, sized
WScript.Echo J.Encode(sized)
sized = Array(1, 2)
For Each element In sized
  A.Push sized, 3
Next
WScript.Echo "locked by a loop: " & J.Encode(sized)
WScript.Echo J.Encode(A.Splice(sized, 1, 1, "x", 2)) & " " & J.Encode(sized) & " " & J.Encode(A.Slice(sized, True, 0)) & " " & J.Encode(sized)
sized = Array(10, 9, 2.5, True)
WScript.Echo A.Sort(sized) & " " & J.Encode(sized)

fixed(0) = "a"
A.Push fixed, "d"
A.Unshift fixed, "x"
WScript.Echo "fixed: " & J.Encode(fixed)
On Error Resume Next
A.Shift fixed
ShowError "Shift"
element = "text"
A.Reverse element
ShowError "Reverse"
On Error GoTo 0

Set dictionary = CreateObject("Scripting.Dictionary")
dictionary.Add "pear", 3
dictionary.Add "Apple", F.Concat
dictionary.Add 7, "seven"
Set sorted = F.Dictionaries.Sort(dictionary, True)
WScript.Echo "the same: " & (sorted Is dictionary) & " " & J.Encode(dictionary.Keys) & " " & TypeName(dictionary("Apple"))

WScript.Echo TypeName(F.Max(3, 7, 5)) & " " & F.Min(sized(1), 9) & " " & IsNull(F.Max()) & " " & IsEmpty(F.Max(Array(1, 2)))
start = Timer
F.Sleep 300
WScript.Echo "slept: " & (Timer - start >= 0.28)
