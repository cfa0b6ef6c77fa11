<%@ CodePage=99999 %>
