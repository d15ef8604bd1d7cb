library ieee;
use ieee.std_logic_1164.all;
use ieee.numeric_std.all;

entity multiplier is
  generic (width : positive := 8);
  port (a, b : in unsigned(width - 1 downto 0); product : out unsigned(2 * width - 1 downto 0));
end entity;

architecture plain of multiplier is
begin
  product <= a * b;
end architecture;
