' Page code that runs during a call of the library and changes, clears or lets go of what the call
' works with. Argument: the folder to write into; it gets a new folder of this page's own.
Option Explicit
On Error Resume Next

Dim files, folder, logger, functions, builder, variable, list, entries, asked, result

' A default value that runs a step of the page.
Class Step
  Public name
  Public Default Property Get Value
    Run name
    Value = "e"
  End Property
End Class

Function Runs(name)
  Set Runs = New Step
  Runs.name = name
End Function

Sub Run(name)
  Select Case name
    Case "clear": Set variable = Nothing
    Case "text": variable = "changed meanwhile"
    Case "append": builder.Append "(inner)"
    Case "empty": builder.Clear
    Case "trim": builder.TrimToSize
    Case "terminate": logger.Class_Terminate
    Case "end page": logger.OnEndPage
    Case "roll over": RollOver
    Case "let go": Set logger = Nothing
    Case "replace": list = Empty
    Case "remove": entries.RemoveAll
    Case "ask"
      asked = asked + 1
      Err.Raise 450
  End Select
End Sub

Sub RollOver
  logger.RolloverBytes = 10
  logger.WriteLog 2, "in the new file"
  logger.RolloverBytes = 0
End Sub

Class Failing
  Public Property Get Number
    Run "ask"
  End Property
End Class

Sub Show(label)
  If Err.Number <> 0 Then label = label & ", error " & Err.Number
  WScript.Echo label
  Err.Clear
End Sub

Sub ShowLogged(label, text)
  Show label & ": " & (InStr(result, text) > 0)
  result = ""
End Sub

Set files = CreateObject("Scripting.FileSystemObject")
folder = WScript.Arguments(0) & "\reentry"
If files.FolderExists(folder) Then files.DeleteFolder folder
Set functions = CreateObject("QUENDAL_REPORTS_ASP.FUNCTIONS")
Set builder = functions.Concat
Set logger = CreateObject("QUENDAL_REPORTS_ASP.LOGGING")
logger.SetLogPath folder & "\"
logger.SetLogFile "LOG.TXT"

Set variable = Runs("nothing")
result = logger.WriteParam(2, Runs("clear"), variable)
Show "a value that was an object: " & (Right(result, 2) = " e")
variable = "the text"
result = logger.WriteParam(2, Runs("text"), variable)
ShowLogged "a value that was text", "the text"
variable = "the title"
result = logger.Dump(2, Runs("text"), variable)
ShowLogged "the title of a dump", "the title"
variable = "the title"
Set result = Runs("text")
logger.LogDictionary CreateObject("Scripting.Dictionary"), variable, 1, result
ShowLogged "the title of a dictionary", "the title"
variable = "no\such\folder"
result = logger.LogFileVersionInfo(variable, Runs("text"))
Show "the folder of a report: " & result

Set variable = Runs("nothing")
Show "the larger of three: " & functions.Max(variable, Runs("clear"), 3)
Set variable = Runs("nothing")
Show "the smaller of three: " & functions.Min(variable, Runs("clear"), 3)

builder.Append "a", Runs("append"), "b"
Show "append while appending: " & builder.Value
builder.Append "c", Runs("empty"), "d"
Show "clear while appending: " & builder.Value
builder.Append " ", Runs("trim"), "f"
Show "trim while appending: " & builder.Value

For Each variable In Array("terminate", "end page", "roll over")
  result = logger.WriteLog(2, Runs(variable))
  ShowLogged variable & " while writing", " e"
Next

asked = 0
logger.LogMSError 2, New Failing
Show "a property that raises, asked " & asked & " times"

' Hosts differ in whether they refuse to replace an array that is locked.
list = Array(Runs("replace"), 2, 3)
functions.ARRAYS.Shift list
Err.Clear
list = Array(Runs("replace"), "a")
functions.ARRAYS.Sort list
Err.Clear
Set entries = CreateObject("Scripting.Dictionary")
entries.Add "a", Runs("remove")
entries.Add "b", Runs("remove")
functions.Dictionaries.Sort entries, False
Err.Clear
Show "remove while sorting: " & entries.Count

result = logger.WriteLog(2, Runs("let go"))
Show "let go while writing: " & (logger Is Nothing)
ShowLogged "the entry", " e"
