# Only comments here.
#
