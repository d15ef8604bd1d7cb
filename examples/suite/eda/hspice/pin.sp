* An output pin with its package.
.subckt pin in pad
r1 in n1 25
l1 n1 pad 2n
c1 pad 0 5p
.ends
