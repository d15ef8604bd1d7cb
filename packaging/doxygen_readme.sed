# The front page of the reference: links to what is not in it are plain words there.
s#\[([^]]+)\]\((examples/README\.md|LICENSE)\)#\1#g
