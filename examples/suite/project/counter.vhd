library ieee;
use ieee.std_logic_1164.all;

-- The same interface as the Verilog source, for mixed designs.
entity counter is
  port (clk, button : in std_logic; segments : out std_logic_vector(6 downto 0));
end entity;
