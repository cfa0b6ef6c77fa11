<% Application.Lock
Dim hits, i
hits = Application("hits")
For i = 1 To 200: Next
Application("hits") = hits + 1
Application.Unlock %><%= hits + 1 %>
