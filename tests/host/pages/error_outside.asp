<!--#include file="../../../../../../outside.inc"-->
