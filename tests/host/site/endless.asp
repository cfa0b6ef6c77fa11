<% Do
  n = n + 1
Loop %>