' Page code that runs during a call of the library and changes, clears or lets go of what the call
' works with. Argument: the folder to write into; it gets a new folder of this page's own.
Option Explicit
On Error Resume Next

Dim files, folder, logger, functions, variable, list, entries, result

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
    Case "let go": Set logger = Nothing
    Case "replace": list = Empty
    Case "remove": entries.RemoveAll
  End Select
End Sub

Sub Show(label)
  WScript.Echo label
  Err.Clear
End Sub

Set files = CreateObject("Scripting.FileSystemObject")
folder = WScript.Arguments(0) & "\reentry"
If files.FolderExists(folder) Then files.DeleteFolder folder
Set functions = CreateObject("QUENDAL_REPORTS_ASP.FUNCTIONS")
Set logger = CreateObject("QUENDAL_REPORTS_ASP.LOGGING")
logger.SetLogPath folder & "\"
logger.SetLogFile "LOG.TXT"

Set variable = Runs("nothing")
result = logger.WriteParam(2, Runs("clear"), variable)
Show "a value that was an object: " & (Right(result, 2) = " e")
' Hosts differ in whether they refuse to replace an array that is locked.
list = Array(Runs("replace"), 2, 3)
functions.ARRAYS.Shift list
Err.Clear
Set entries = CreateObject("Scripting.Dictionary")
entries.Add "a", Runs("remove")
entries.Add "b", Runs("remove")
functions.Dictionaries.Sort entries, False
Err.Clear
Show "remove while sorting: " & entries.Count

result = logger.WriteLog(2, Runs("let go"))
Show "let go while writing: " & (logger Is Nothing)
Show "the entry: " & (Right(result, 2) = " e")
