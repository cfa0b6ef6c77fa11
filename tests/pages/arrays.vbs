' The array and dictionary functions, Max, Min and Sleep, as a page uses them.
Option Explicit

Dim F, A
Set F = CreateObject("QUENDAL_REPORTS_ASP.FUNCTIONS")
Set A = F.ARRAYS

Function IsUnallocated(value)
  IsUnallocated = False
  If IsArray(value) Then IsUnallocated = TypeName(A.GetUBound(value)) = "Integer"
End Function

Function Text(value)
  Dim i
  If IsUnallocated(value) Then
    Text = "unallocated"
  ElseIf IsArray(value) Then
    Text = "["
    For i = A.GetLBound(value) To A.GetUBound(value)
      If i > A.GetLBound(value) Then Text = Text & " "
      Text = Text & Text(value(i))
    Next
    Text = Text & "]"
  ElseIf IsObject(value) Then
    Text = TypeName(value)
  ElseIf IsNull(value) Then
    Text = "Null"
  ElseIf IsEmpty(value) Then
    Text = "Empty"
  Else
    Text = CStr(value)
  End If
End Function

Sub Show(what, value)
  WScript.Echo what & ": " & Text(value)
End Sub

Sub ShowError(what)
  If Err.Number = 0 Then
    WScript.Echo what & ": no error"
  Else
    WScript.Echo what & ": error " & Err.Number & ", " & Err.Source & ", " & Err.Description
  End If
  Err.Clear
End Sub

' Bounds.
Dim dynamic(), fixed(2), sized
WScript.Echo "unallocated: " & A.GetUBound(dynamic) & " " & TypeName(A.GetUBound(dynamic))
WScript.Echo "fixed: " & A.GetLBound(fixed) & " to " & A.GetUBound(fixed) & " " & TypeName(A.GetUBound(fixed))
WScript.Echo "no elements: " & A.GetUBound(Array()) & " " & TypeName(A.GetUBound(Array()))

' A dynamic array as a stack.
A.Push dynamic, 1
A.Push dynamic, "two"
A.Push dynamic, Array(3, "three")
A.Push dynamic, F.Concat
Show "pushed", dynamic
Show "popped", A.Pop(dynamic)
Show "popped", A.Pop(dynamic)
Show "left", dynamic
Show "shifted", A.Shift(dynamic)
Show "last one popped", A.Pop(dynamic)
Show "still there", dynamic
Show "last one shifted", A.Shift(dynamic)
WScript.Echo "now unallocated: " & A.GetUBound(dynamic)
A.Push dynamic, "a"
A.Push dynamic, "b"
A.Unshift dynamic, "x"
Show "unshifted", dynamic
A.Unshift dynamic, F.OS
Show "unshifted an object", dynamic

' An array in a variable, and one within an array.
sized = Array("a", "b", "c", "d")
A.Unshift sized, "x"
Show "unshifted four", sized
A.Push sized, sized
Show "pushed onto itself", sized
sized = Array(Array(1, 2), 3)
A.Push sized(0), 9
Show "pushed onto an element", sized
sized = Array("only")
Show "shifted the only one", A.Shift(sized)
A.Push sized, "again"
Show "pushed again", sized

' A fixed array keeps its bounds.
fixed(0) = "a"
fixed(1) = "b"
fixed(2) = "c"
A.Push fixed, "d"
Show "fixed, pushed", fixed
Show "fixed, popped", A.Pop(fixed)
Show "fixed, still", fixed
A.Unshift fixed, "x"
Show "fixed, unshifted", fixed
On Error Resume Next
A.Shift fixed
ShowError "fixed, shifted"
On Error GoTo 0

' A loop over an array locks it.
Dim element
sized = Array(1, 2)
For Each element In sized
  A.Push sized, 3
Next
Show "pushed within a loop", sized

' Slices.
sized = Array("a", "b", "c", "d", "e")
Show "slice by default", A.Slice(sized, False, 0)
Show "slice taken out", A.Slice(sized, True, 1, 3)
Show "left", sized
Show "spliced out", A.Splice(sized, 1, 1, "x", 2, F.JSON)
Show "left", sized

' Order.
sized = Array(1, "b", F.OS, Null)
A.Reverse sized
Show "reversed", sized
sized = Array(10, 9, 2.5, True, #1/1/2001#)
A.Sort sized
WScript.Echo "numbers: " & sized(0) & " " & sized(1) & " " & sized(2) & " " & sized(3) & " " & TypeName(sized(4))
WScript.Echo "unsortable, logged: " & CBool(A.Sort(Array(1, Null), -1, -1, False, 1, False))

' Errors.
Dim noArray
noArray = "text"
On Error Resume Next
A.GetUBound noArray
ShowError "GetUBound"
A.Push Empty, 1
ShowError "Push"
A.Shift Nothing
ShowError "Shift"
A.Reverse F
ShowError "Reverse"
On Error GoTo 0

' Dictionaries.
Dim dictionary, sorted
Set dictionary = CreateObject("Scripting.Dictionary")
dictionary.Add "pear", 3
dictionary.Add "Apple", F.Concat
dictionary.Add "fig", Array(1, 2)
dictionary.Add 7, "seven"
Set sorted = F.Dictionaries.Sort(dictionary, True)
WScript.Echo "the same: " & (sorted Is dictionary)
Show "by key", dictionary.Keys
Show "items", dictionary.Items
On Error Resume Next
F.Dictionaries.Sort F, True
ShowError "no dictionary"
On Error GoTo 0

' Max, Min and Sleep.
Show "Max", F.Max(3, 7, 5)
Show "Min", F.Min(3, 7, 5)
Show "Max of a number and a text", F.Max(2, "abc")
Show "Max of texts", F.Max("b", "B", "a")
Show "Max after Null", F.Max(Null, 5)
Show "Max beside Null", F.Max(5, Null, 9)
Show "Max of nothing", F.Max()
Show "Max of an array", F.Max(Array(1, 2, 3))
Show "Min of a variable", F.Min(sized(2), 2.5)
WScript.Echo "type kept: " & TypeName(F.Max(3, 7, 5)) & " " & TypeName(F.Max(1, 2.5))

Dim start
start = Timer
F.Sleep 300
WScript.Echo "slept: " & (Timer - start >= 0.28)
start = Timer
F.Sleep "abc"
F.Sleep Null
F.Sleep 0
WScript.Echo "did not sleep: " & (Timer - start < 0.25)
