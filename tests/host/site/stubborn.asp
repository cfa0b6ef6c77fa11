<% Server.ScriptTimeout = 1
On Error Resume Next
Application.Lock
Do
  Response.Write "on and on"
Loop %>
