<% Server.ScriptTimeout = 1
Do
  n = n + 1
Loop %>
