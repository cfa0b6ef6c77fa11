# Usage: perl undate_typelib.pl FILE
# The type library compiler writes the moment of its run into its output, as text and as a number.
# Replaces both by the same fixed moment, so that equal sources give equal bytes.
use strict;
use warnings;

local $/;
open my $file, '+<:raw', $ARGV[0] or die "$ARGV[0]: $!\n";
my $bytes = <$file>;
my $moment = 'Thu Jan  1 00:00:00 1970';
# The text is a counted string, padded with "W"; the number follows as a tagged value.
$bytes =~ s/(Created by WIDL version \S+ at )[^\n]{24}(\nW*\x13\0).{4}/$1$moment$2\0\0\0\0/s
  or die "$ARGV[0]: the moment of its making was not found\n";
seek $file, 0, 0;
print $file $bytes;
close $file or die "$ARGV[0]: $!\n";
